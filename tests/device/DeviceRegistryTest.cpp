// Counting, creating and deleting devices, and what a handle is good for.

#include "KvSyncCore/DeviceController.h"
#include "device/support/DeviceTest.h"

#include <limits>
#include <stdexcept>

using namespace KvSyncTest;
using KvSyncCore::DeviceController;
using KvSyncCore::DeviceManager;

namespace {

const QString scripted = QStringLiteral("Scripted");
const std::vector<LogLine> nothing;

class DeviceRegistry : public DeviceTest
{
protected:
    DeviceRegistry()
        : device([](const Call &) { return Success; })
    {
    }

    void expectLines(const std::vector<LogLine> &expected, const std::string &operation)
    {
        EXPECT_EQ(log.lines(), expected);
        for (const LogLine &line : log.lines(Channel::QtCritical)) {
            expectWrittenBy(line, "KvSyncCore::DeviceManager::" + operation + "(",
                            "DevicePlugins.cpp");
        }
        log.clear();
    }

    void expectNotLoaded(const QString &name, const QVersionNumber &wanted)
    {
        const QString text =
            QStringLiteral("The ") + name + wanted.toString() + QStringLiteral(" is not exist");
        EXPECT_EQ(manager->enumDevice(name, wanted), qMakePair(PluginNotLoaded, 0));
        expectLines({glogInfoLine(text), criticalLine(text)}, "enumDevice");
        EXPECT_EQ(manager->createDevice(name, wanted), qMakePair(PluginNotLoaded, qint64(0)));
        expectLines({criticalLine(text)}, "createDevice");
    }

    void expectDeleteRefused(DeviceHandle handle, const char *text = "handle is invalid")
    {
        log.clear();
        EXPECT_EQ(manager->deleteDevice(handle), HandleInvalid);
        expectLines({criticalLine(QString::fromLatin1(text))}, "deleteDevice");
    }

    BareDevice device;
};

DeviceHandle addressOf(const BaseDeviceSpace::DeviceInterface &device)
{
    return static_cast<DeviceHandle>(reinterpret_cast<quintptr>(&device));
}

} // namespace

// Counting and creating

TEST_F(DeviceRegistry, CountsWhatTheFactoryReports)
{
    loadFixture(scripted);
    EXPECT_EQ(manager->enumDevice(scripted, version), qMakePair(Success, 5));
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, AHandleIsTheDevicesAddress)
{
    EXPECT_EQ(lend(device), addressOf(device));
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, AnEmptyNameHasACodeOfItsOwnHere)
{
    const QString text = QStringLiteral("plugin name or version is null");
    const std::vector<LogLine> lines = {criticalLine(text), glogErrorLine(text)};
    EXPECT_EQ(manager->enumDevice(QString(), version), qMakePair(PluginNameOrVersionNull, 0));
    expectLines(lines, "enumDevice");
    EXPECT_EQ(manager->createDevice(QString(), version),
              qMakePair(PluginNameOrVersionNull, qint64(0)));
    expectLines(lines, "createDevice");
}

TEST_F(DeviceRegistry, ANullVersionHasACodeOfItsOwnHere)
{
    loadFixture(scripted);
    const QString text = QStringLiteral("plugin name or version is null");
    const std::vector<LogLine> lines = {criticalLine(text), glogErrorLine(text)};
    EXPECT_EQ(manager->enumDevice(scripted, QVersionNumber()),
              qMakePair(PluginNameOrVersionNull, 0));
    expectLines(lines, "enumDevice");
    EXPECT_EQ(manager->createDevice(scripted, QVersionNumber()),
              qMakePair(PluginNameOrVersionNull, qint64(0)));
    expectLines(lines, "createDevice");
}

TEST_F(DeviceRegistry, CountingDoesNotLoadThePlugin)
{
    copyFixture(scripted, QStringLiteral("Scripted.1.0.1.dll"));
    expectNotLoaded(scripted, version);
}

TEST_F(DeviceRegistry, NameAndVersionStandTogetherInTheTextWithEverySegment)
{
    expectNotLoaded(QStringLiteral("Camera"), QVersionNumber({2, 1, 7, 0, 3}));
    expectNotLoaded(QStringLiteral("扫描"), QVersionNumber(2));
}

TEST_F(DeviceRegistry, AnotherMinorVersionIsNotLoaded)
{
    loadFixture(scripted);
    expectNotLoaded(scripted, QVersionNumber(1, 1));
}

TEST_F(DeviceRegistry, TheMicroSegmentDoesNotMatter)
{
    loadFixture(scripted);
    EXPECT_EQ(manager->enumDevice(scripted, QVersionNumber(1, 0, 99)).first, Success);
    EXPECT_EQ(manager->enumDevice(scripted, QVersionNumber(1)).first, Success);
}

// Root objects that are no factory

TEST_F(DeviceRegistry, AnOlderInterfaceIdentifierLoadsAndCountsAsNotLoaded)
{
    loadFixture(QStringLiteral("OlderFactory"));
    expectNotLoaded(QStringLiteral("OlderFactory"), version);
}

TEST_F(DeviceRegistry, ACommandPluginLoadsAndCountsAsNotLoaded)
{
    folder.copyModule(commandFixture(QStringLiteral("Recorder")),
                      QStringLiteral("Recorder.1.0.1.dll"));
    EXPECT_EQ(manager->loadDevicePlugin(QStringLiteral("Recorder"), version), Success);
    log.clear();
    expectNotLoaded(QStringLiteral("Recorder"), version);
}

// Name and kinds

TEST_F(DeviceRegistry, NameAndKindsAreThePluginsAndSilent)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(manager->name(handle), qMakePair(Success, QStringLiteral("fake")));
    const auto types = manager->types(handle);
    EXPECT_EQ(types.first, Success);
    EXPECT_EQ(types.second, BaseDeviceSpace::CameraDevice | BaseDeviceSpace::ControllerDevice);
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, NameAndKindsOfUnknownHandlesAreEmpty)
{
    const DeviceHandle known = lend(device);
    const std::vector<LogLine> lines = {criticalLine(QStringLiteral("The handle is invalid"))};
    for (const DeviceHandle handle : {DeviceHandle(0), DeviceHandle(-1), known + 1}) {
        log.clear();
        EXPECT_EQ(manager->name(handle), qMakePair(HandleInvalid, QString()));
        expectLines(lines, "name");
        const auto types = manager->types(handle);
        EXPECT_EQ(types.first, HandleInvalid);
        EXPECT_EQ(static_cast<int>(types.second), 0);
        expectLines(lines, "types");
    }
}

// Deleting

TEST_F(DeviceRegistry, DeletingIsSilentAndEndsTheHandle)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(log.lines(), nothing);
    EXPECT_EQ(manager->name(handle).first, HandleInvalid);
}

TEST_F(DeviceRegistry, DeletingTwiceIsRefused)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    expectDeleteRefused(handle);
}

TEST_F(DeviceRegistry, HandlesThatNameNothingAreNotDeleted)
{
    const DeviceHandle known = lend(device);
    for (const DeviceHandle handle :
         {DeviceHandle(0), DeviceHandle(-1), known + 1, std::numeric_limits<DeviceHandle>::min()})
        expectDeleteRefused(handle);
    EXPECT_EQ(manager->name(known).first, Success);
}

TEST_F(DeviceRegistry, AHandleOfAnotherManagerIsNotDeleted)
{
    const DeviceHandle handle = lend(device);
    DeviceManager other;
    log.clear();
    EXPECT_EQ(other.deleteDevice(handle), HandleInvalid);
    EXPECT_EQ(manager->name(handle).first, Success);
}

TEST_F(DeviceRegistry, AnAddressThatIsUsedAgainIsAHandleAgain)
{
    const DeviceHandle first = lend(device);
    EXPECT_EQ(manager->deleteDevice(first), Success);
    EXPECT_EQ(lend(device), first);
    EXPECT_EQ(manager->name(first).first, Success);
}

TEST_F(DeviceRegistry, ADeviceGivenTwiceIsOneHandle)
{
    const DeviceHandle handle = lend(device);
    EXPECT_EQ(lend(device), handle);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    expectDeleteRefused(handle);
}

// Faulty factories

TEST_F(DeviceRegistry, ANullDeviceIsCreatedSuccessfullyAsHandleZero)
{
    loadFixture(QStringLiteral("NullDevice"));
    EXPECT_EQ(manager->createDevice(QStringLiteral("NullDevice"), version),
              qMakePair(Success, qint64(0)));
    EXPECT_EQ(log.lines(), nothing);
    // The entry under 0 is harmless: its lookup gives null.
    EXPECT_EQ(manager->name(0).first, HandleInvalid);
    expectDeleteRefused(0);
}

TEST_F(DeviceRegistry, APluginThatClearsThePointerLeavesTheHandleRegistered)
{
    loadFixture(QStringLiteral("ClearsPointer"));
    const DeviceHandle handle = createFixtureDevice(QStringLiteral("ClearsPointer"));
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, ARefusalToDestroyIsHandedOutAndKeepsTheHandle)
{
    loadFixture(QStringLiteral("RefusesDestroy"));
    const DeviceHandle handle = createFixtureDevice(QStringLiteral("RefusesDestroy"));
    EXPECT_EQ(manager->deleteDevice(handle), static_cast<ErrorCode>(0x01F10001));
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceRegistry, WhatAFactoryThrowsPassesThrough)
{
    const QString name = QStringLiteral("FactoryThrows");
    loadFixture(name);
    const auto textOf = [](const auto &call) -> std::string {
        try {
            call();
        } catch (const std::runtime_error &exception) {
            return exception.what();
        }
        return "nothing thrown";
    };
    EXPECT_EQ(textOf([&] { manager->enumDevice(name, version); }), "cannot count");
    EXPECT_EQ(textOf([&] { manager->createDevice(name, version); }), "cannot create");
    EXPECT_EQ(log.lines(), nothing);
}

namespace {

class ThrowsOnceScript : public LendingScript
{
public:
    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&) override
    {
        if (!std::exchange(thrown, true))
            throw std::runtime_error("lid open");
        return Success;
    }

private:
    bool thrown = false;
};

} // namespace

TEST_F(DeviceRegistry, ADestroyThatThrowsPassesThroughAndKeepsTheHandle)
{
    ThrowsOnceScript script;
    script.next = &device;
    DeviceScript::use(&script);
    loadFixture(scripted);
    const DeviceHandle handle = createFixtureDevice(scripted);
    EXPECT_THROW(manager->deleteDevice(handle), std::runtime_error);
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    endManager();
}

namespace {

class FickleScript : public LendingScript
{
public:
    bool isFactory() override { return answers; }

    bool answers = true;
};

} // namespace

TEST_F(DeviceRegistry, ADeviceWhosePluginIsNoFactoryAnyMoreIsNotDeleted)
{
    FickleScript script;
    script.next = &device;
    DeviceScript::use(&script);
    loadFixture(scripted);
    const DeviceHandle handle = createFixtureDevice(scripted);
    script.answers = false;
    expectDeleteRefused(handle, "The handle is invalid");
    expectNotLoaded(scripted, version);
    EXPECT_EQ(manager->name(handle).first, Success);
    endManager();
}

// Controllers

TEST_F(DeviceRegistry, TwoControllersOverOneManagerSeeTheSameDevices)
{
    loadFixture(scripted);
    lending.next = &device;
    DeviceController first(manager.get());
    DeviceController second(manager.get());
    const DeviceHandle handle = first.createDevice(scripted, version).second;
    EXPECT_EQ(second.name(handle).first, Success);
    EXPECT_EQ(second.deleteDevice(handle), Success);
    EXPECT_EQ(first.name(handle).first, HandleInvalid);
}

TEST_F(DeviceRegistry, AnAssignedControllerSeesTheDevicesOfTheSourcesManager)
{
    const DeviceHandle handle = lend(device);
    DeviceManager other;
    DeviceController source(manager.get());
    DeviceController target(&other);
    EXPECT_EQ(target.name(handle).first, HandleInvalid);
    target = source;
    EXPECT_EQ(target.name(handle).first, Success);
}
