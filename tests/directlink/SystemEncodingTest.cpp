// The local 8-bit encoding as the system has it, with no codec set by anyone: a code page on
// Windows, UTF-8 on Linux. The run says which one it is meant for.

#include "DirectLink.h"

#include <QtCore/QByteArray>
#include <QtCore/QTextCodec>

#include <cstring>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace {

using namespace KvSyncTest;

/// A text and its bytes in one encoding.
struct Encoding
{
    QByteArray name;
    QByteArray bytes;
    QString text;
};

const Encoding encodings[] = {
    {"1252", "\xC9t\xE9-\x80", QString::fromUtf8("\xC3\x89t\xC3\xA9-\xE2\x82\xAC")},
    {"936", "\xC9\xA8\xC3\xE8-1", QString::fromUtf8("\xE6\x89\xAB\xE6\x8F\x8F-1")},
    {"UTF-8", "\xE6\x89\xAB\xE6\x8F\x8F-1", QString::fromUtf8("\xE6\x89\xAB\xE6\x8F\x8F-1")},
};

QByteArray systemEncoding()
{
#ifdef Q_OS_WIN
    return QByteArray::number(GetACP());
#else
    return QTextCodec::codecForLocale()->name();
#endif
}

const Encoding &present()
{
    for (const Encoding &each : encodings) {
        if (each.name == systemEncoding())
            return each;
    }
    static const Encoding none;
    return none;
}

char *mutableText(const QByteArray &bytes)
{
    static QByteArray kept;
    kept = bytes;
    return kept.data();
}

class SystemEncoding : public ConnectedScanner
{
};

TEST_F(SystemEncoding, IsTheOneThatThisRunIsMeantFor)
{
    EXPECT_EQ(systemEncoding().toStdString(), qgetenv("KVSYNC_TEST_ENCODING").toStdString());
}

TEST_F(SystemEncoding, IsWhatNamesTravelToTheScannerIn)
{
    const Journal journal =
        journalOf([&] { controller.connectDeviceBySerial(anyHandle, present().text); });
    EXPECT_THAT(journal.front(), ::testing::StartsWith("GetCamerasInformation(\"" +
                                                       present().bytes.toStdString() + "\", "));
}

TEST_F(SystemEncoding, IsWhatSerialNumbersAreReadIn)
{
    scanner.effects.GetCameraSerialNumber = [](void *&, int, char *&serial) {
        serial = mutableText(present().bytes);
        return accepted;
    };
    QString serial;
    EXPECT_EQ(controller.getCameraSerialNumber(0, serial), Success);
    EXPECT_EQ(serial, present().text);
}

TEST_F(SystemEncoding, IsPrintedByteForByte)
{
    scanner.effects.GetCameraSerialNumber = [](void *&, int, char *&serial) {
        serial = mutableText(present().bytes);
        return accepted;
    };
    QString serial;
    EXPECT_THAT(
        journalOf([&] { controller.getCameraSerialNumber(0, serial); }),
        ::testing::Contains(::testing::HasSubstr("serials:" + present().bytes.toStdString())));
}

TEST_F(SystemEncoding, IsWhatUserInformationIsGivenAndHandedOutIn)
{
    std::string stored;
    scanner.effects.WriteUserInfomation = [&](void *&, int, const char *data, int length) {
        stored.assign(data, static_cast<std::size_t>(length));
        return accepted;
    };
    scanner.effects.ReadUserInfomation = [&](void *&, int, char *&buffer) {
        std::memcpy(buffer, stored.c_str(), stored.size() + 1);
        return accepted;
    };
    EXPECT_EQ(controller.writeCustomInfo(anyHandle, 3, present().bytes), Success);
    EXPECT_EQ(stored, present().text.toStdString());
    QByteArray read;
    EXPECT_EQ(controller.readCustomInfo(anyHandle, 3, read), Success);
    EXPECT_EQ(read, present().bytes);
}

} // namespace
