// The example of a device plug-in: small, and right.

#include "device/support/DeviceTest.h"

#include <QtCore/QCoreApplication>

#include <thread>

namespace {

using namespace KvSyncTest;

class Example : public DeviceTest
{
protected:
    using Values = QMap<QString, QVariant>;

    Example()
    {
        const QString fileName = "Blinker.1.0.1.dll";
        folder.copyModule(
            QCoreApplication::applicationDirPath() + "/../examples/Device/" + fileName, fileName);
        EXPECT_EQ(manager->loadDevicePlugin(name, version), Success);
        const auto made = manager->createDevice(name, version);
        EXPECT_EQ(made.first, Success);
        lamp = made.second;
        log.clear();
    }

    ErrorCode turn(bool on) { return manager->setProperty(lamp, property, {{property, on}}); }

    bool isOn()
    {
        Values values;
        EXPECT_EQ(manager->getProperty(lamp, property, values), Success);
        return values.value(property).toBool();
    }

    const QString name = "Blinker";
    const QString property = "on";
    DeviceHandle lamp = 0;
};

TEST_F(Example, LogsWhatItsLampDoesInTheSystemsCategory)
{
    EXPECT_EQ(turn(true), Success);
    EXPECT_EQ(turn(true), Success); // nothing new
    EXPECT_EQ(turn(false), Success);
    const std::vector<LogLine> lines = log.lines(Channel::QtOther);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines.at(0).text, "the lamp is on");
    EXPECT_EQ(lines.at(0).category, "KvSyncTool");
    EXPECT_EQ(lines.at(1).text, "the lamp is off");
}

TEST_F(Example, KeepsItsLampUnderSeveralThreads)
{
    // The thread sanitizer sees what this alone cannot.
    std::thread other([this] {
        for (int i = 0; i < 1000; ++i)
            EXPECT_EQ(turn(i % 2 == 0), Success);
    });
    for (int i = 0; i < 1000; ++i)
        isOn();
    other.join();
    EXPECT_FALSE(isOn());
}

TEST_F(Example, KnowsNoOtherPropertyAndNoOtherDevice)
{
    Values values;
    EXPECT_EQ(manager->getProperty(lamp, "color", values), InvalidParameter);
    EXPECT_EQ(manager->setProperty(lamp, "color", {}), InvalidParameter);
    EXPECT_EQ(manager->deleteDevice(lamp), Success);
    EXPECT_EQ(manager->setProperty(lamp, property, {}), HandleInvalid);
}

} // namespace
