#include "VirtualProjector.h"

namespace VirtualScanner {

VirtualProjector::VirtualProjector(DeviceGate &deviceGate, PropertyTable &properties)
    : gate(deviceGate)
{
    gate.onLoss([this] { light = {}; });
    properties.add(QStringLiteral("pattern"),
                   [this](Values &values) { return getPattern(values); });
    properties.add(QStringLiteral("scan"), [this](Values &values) { return getScan(values); });
}

ErrorCode VirtualProjector::projectorPWM(bool on)
{
    return gate.run("projectorPWM", [&] {
        light.pwmOn = on;
        return Success;
    });
}

ErrorCode VirtualProjector::currentProjectorPWM(bool &on)
{
    return gate.run("currentProjectorPWM", [&] {
        on = light.pwmOn;
        return Success;
    });
}

ErrorCode VirtualProjector::projectorLEDSwitch(bool on)
{
    return gate.run("projectorLEDSwitch", [&] {
        light.ledOn = on;
        return Success;
    });
}

ErrorCode VirtualProjector::currentProjectorLEDSwitch(bool &on)
{
    return gate.run("currentProjectorLEDSwitch", [&] {
        on = light.ledOn;
        return Success;
    });
}

ErrorCode VirtualProjector::setProjectorLuminance(unsigned char red, unsigned char green,
                                                  unsigned char blue)
{
    return gate.run("setProjectorLuminance", [&] {
        light.luminance = {red, green, blue};
        return Success;
    });
}

ErrorCode VirtualProjector::getProjectorLuminance(unsigned char &red, unsigned char &green,
                                                  unsigned char &blue)
{
    return gate.run("getProjectorLuminance", [&] {
        red = light.luminance[0];
        green = light.luminance[1];
        blue = light.luminance[2];
        return Success;
    });
}

ErrorCode VirtualProjector::scan(ProjectorSpace::ScanType type, bool on)
{
    return gate.run("scan", [&] {
        if (type < ProjectorSpace::SingleScan || type > ProjectorSpace::ContinuousScan)
            return BadValue;
        light.isScanning = on;
        light.scanType = type;
        return Success;
    });
}

ErrorCode VirtualProjector::writePatternToFlash(ProjectorSpace::MajorPatternType major,
                                                ProjectorSpace::SubPatternType sub, int index,
                                                int width, int height, const QByteArray &pattern)
{
    return gate.run("writePatternToFlash", [&] {
        if (!fits(index, width, height, pattern))
            return PatternDoesNotFit;
        flash.insert(index, {major, sub, width, height, pattern});
        return Success;
    });
}

bool VirtualProjector::fits(int index, int width, int height, const QByteArray &pattern) const
{
    if (index < 0 || index >= flashPlaces)
        return false;
    if (width < 1 || width > widestPattern || height < 1 || height > highestPattern)
        return false;
    if (pattern.size() != width * height)
        return false;
    int used = pattern.size();
    for (auto place = flash.begin(); place != flash.end(); ++place)
        used += place.key() == index ? 0 : place->pixels.size();
    return used <= flashBytes;
}

ErrorCode VirtualProjector::getPattern(Values &values)
{
    return gate.run("getProperty", [&] {
        const auto pattern = flash.constFind(values.value(QStringLiteral("index"), -1).toInt());
        if (pattern == flash.constEnd())
            return BadValue;
        values.insert(QStringLiteral("major"), static_cast<int>(pattern->major));
        values.insert(QStringLiteral("sub"), static_cast<int>(pattern->sub));
        values.insert(QStringLiteral("width"), pattern->width);
        values.insert(QStringLiteral("height"), pattern->height);
        values.insert(QStringLiteral("data"), pattern->pixels);
        return Success;
    });
}

ErrorCode VirtualProjector::getScan(Values &values)
{
    return gate.run("getProperty", [&] {
        values.insert(QStringLiteral("on"), light.isScanning);
        values.insert(QStringLiteral("type"), static_cast<int>(light.scanType));
        return Success;
    });
}

} // namespace VirtualScanner
