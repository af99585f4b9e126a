#ifndef VIRTUALSCANNER_VIRTUALPROJECTOR_H
#define VIRTUALSCANNER_VIRTUALPROJECTOR_H

#include "PropertyTable.h"

#include "KvSyncDevice/ProjectorInterface.h"

#include <array>

namespace VirtualScanner {

/// The projector capability. It keeps what it is told; the patterns in its flash memory can be read
/// back as a property, and outlive a loss of the device.
class VirtualProjector : public ProjectorSpace::ProjectorInterface
{
public:
    static constexpr int flashPlaces = 16;
    static constexpr int flashBytes = 4 * 1024 * 1024; ///< for all patterns together
    static constexpr int widestPattern = 1280;         ///< pixels
    static constexpr int highestPattern = 800;         ///< pixels

    VirtualProjector(DeviceGate &gate, PropertyTable &properties);

    ErrorCode projectorPWM(bool on) override;
    ErrorCode currentProjectorPWM(bool &on) override;
    ErrorCode projectorLEDSwitch(bool on) override;
    ErrorCode currentProjectorLEDSwitch(bool &on) override;
    ErrorCode setProjectorLuminance(unsigned char red, unsigned char green,
                                    unsigned char blue) override;
    ErrorCode getProjectorLuminance(unsigned char &red, unsigned char &green,
                                    unsigned char &blue) override;
    ErrorCode scan(ProjectorSpace::ScanType type, bool on) override;
    /// A pattern of the same place is replaced; one that is refused changes nothing.
    ErrorCode writePatternToFlash(ProjectorSpace::MajorPatternType major,
                                  ProjectorSpace::SubPatternType sub, int index, int width,
                                  int height, const QByteArray &pattern) override;

private:
    struct Pattern
    {
        ProjectorSpace::MajorPatternType major;
        ProjectorSpace::SubPatternType sub;
        int width;
        int height;
        QByteArray pixels;
    };

    /// What a projector without power forgets.
    struct Light
    {
        bool pwmOn = false;
        bool ledOn = false;
        bool isScanning = false;
        ProjectorSpace::ScanType scanType = ProjectorSpace::SingleScan;
        std::array<unsigned char, 3> luminance = {128, 128, 128};
    };

    bool fits(int index, int width, int height, const QByteArray &pattern) const;
    ErrorCode getPattern(Values &values);
    ErrorCode getScan(Values &values);

    DeviceGate &gate;
    Light light;
    QMap<int, Pattern> flash; ///< by place
};

} // namespace VirtualScanner

#endif
