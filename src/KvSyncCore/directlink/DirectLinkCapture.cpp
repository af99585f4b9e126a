#include "LogChannels.h"
#include "device/DeviceManager.h"
#include "directlink/ScannerStatus.h"

#include <limits>
#include <string>

namespace KvSyncCore {

using Tessel3Sync::RETSTATUS;

namespace {

// The length, in UTF-8, from which the scanner's store refuses; also what a read may fill.
constexpr int userInformationSize = 512;

// A QByteArray throws just below the largest int: it needs up to 32 bytes for itself.
constexpr qint64 largestImage = std::numeric_limits<int>::max() - 32;

// 8 bits per pixel. What cannot be an image is empty.
QByteArray copyPixels(const unsigned char *pixels, int width, int height)
{
    const qint64 size = qint64(width) * height;
    if (!pixels || width <= 0 || height <= 0 || size > largestImage)
        return {};
    return {reinterpret_cast<const char *>(pixels), static_cast<int>(size)};
}

} // namespace

ErrorCode DeviceManager::grabImage(const DeviceHandle, unsigned int route,
                                   QList<CameraSpace::ImageBlock *> &blocks)
{
    KVSYNC_DEBUG << " grabImage start";
    std::vector<unsigned char *> images;
    int width = 0;
    int height = 0;
    // Passed by constant reference; the library writes through it all the same.
    int tag = 0;
    double unusedSixth = 0.0;
    int unusedSeventh = 0;
    const RETSTATUS status =
        Tessel3Sync::SnapColorImage(libraryDevice, images, width, height, tag, unusedSixth,
                                    unusedSeventh, static_cast<Tessel3Sync::CONTROLROUTE>(route));
    if (status != Tessel3Sync::RETSTATUS_SUCCESS) {
        KVSYNC_CRITICAL << "SnapColorImage failed";
        return CameraFailed;
    }
    for (const unsigned char *pixels : images) {
        blocks.append(new CameraSpace::ImageBlock{tag, static_cast<quint16>(width),
                                                  static_cast<quint16>(height), 8,
                                                  copyPixels(pixels, width, height)});
    }
    KVSYNC_DEBUG << "grabImage success";
    return Success;
}

// The sub-pattern type is not sent: part of the contract.
ErrorCode DeviceManager::project(const DeviceHandle, ProjectorSpace::MajorPatternType major,
                                 ProjectorSpace::SubPatternType)
{
    KVSYNC_DEBUG << "project start";
    const RETSTATUS status = Tessel3Sync::Project(
        libraryDevice, static_cast<Tessel3Sync::PROJECTWORKTYPES>(static_cast<int>(major)));
    if (status != Tessel3Sync::RETSTATUS_SUCCESS) {
        KVSYNC_CRITICAL << "project failed";
        return ProjectorFailed;
    }
    return Success;
}

ErrorCode DeviceManager::writeCustomInfo(const DeviceHandle, unsigned int address,
                                         const QByteArray &data)
{
    const QString text = QString::fromLocal8Bit(data);
    const std::string utf8 = text.toStdString();
    KVSYNC_DEBUG << "writeCustomInfo start, data: " << text << " std str size: " << utf8.size();
    KVSYNC_DEBUG << " std str: " << QString::fromStdString(utf8);
    // The limit is on the UTF-8 length, not on the given bytes.
    if (utf8.size() >= userInformationSize)
        return InvalidParameter;
    return resultOf(Tessel3Sync::WriteUserInfomation(libraryDevice, static_cast<int>(address),
                                                     utf8.data(), static_cast<int>(utf8.size())),
                    DeviceOperationFailed);
}

ErrorCode DeviceManager::readCustomInfo(const DeviceHandle, unsigned int address, QByteArray &data)
{
    KVSYNC_DEBUG << "readCustomInfo start";
    // The zero behind what the library may fill ends an unterminated text. A library that replaces
    // the pointer owns the original from then on; its address does not tell, since a heap may give
    // the freed one out again. So both are read alike: up to the first zero.
    char *buffer = new char[userInformationSize + 1]();
    const RETSTATUS status =
        Tessel3Sync::ReadUserInfomation(libraryDevice, static_cast<int>(address), buffer);
    const std::string utf8 = buffer ? buffer : "";
    delete[] buffer;
    const QString text = QString::fromStdString(utf8);
    KVSYNC_DEBUG << " 2 ReadUserInfomation data: " << text;
    data = text.toLocal8Bit();
    return resultOf(status, DeviceOperationFailed);
}

} // namespace KvSyncCore
