// Factories that are none, and factories that do what they should not.

#include "device/support/DeviceRegistry.h"

#include <stdexcept>
#include <utility>

using namespace KvSyncTest;

using DeviceFactory = DeviceRegistry;

// Root objects that are no factory

TEST_F(DeviceFactory, AnOlderInterfaceIdentifierLoadsAndCountsAsNotLoaded)
{
    loadFixture(QStringLiteral("OlderFactory"));
    expectNotLoaded(QStringLiteral("OlderFactory"), version);
}

TEST_F(DeviceFactory, ACommandPluginLoadsAndCountsAsNotLoaded)
{
    folder.copyModule(commandFixture(QStringLiteral("Recorder")),
                      QStringLiteral("Recorder.1.0.1.dll"));
    EXPECT_EQ(manager->loadDevicePlugin(QStringLiteral("Recorder"), version), Success);
    log.clear();
    expectNotLoaded(QStringLiteral("Recorder"), version);
}

TEST_F(DeviceFactory, IsWhateverTheRootObjectAnswersWith)
{
    class Deputy : public IFactory
    {
    public:
        int enumDevices() override { return 11; }
        BaseDeviceSpace::DeviceInterface *createDevice() override { return nullptr; }
        ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&) override { return Success; }
    };

    class DelegatingScript : public LendingScript
    {
    public:
        IFactory *factory(IFactory *) override { return &deputy; }

        Deputy deputy;
    };

    DelegatingScript script;
    DeviceScript::use(&script);
    loadFixture(scripted);
    EXPECT_EQ(manager->enumDevice(scripted, version), qMakePair(Success, 11));
    endManager();
}

// Faulty factories

TEST_F(DeviceFactory, ANullDeviceIsCreatedSuccessfullyAsHandleZero)
{
    loadFixture(QStringLiteral("NullDevice"));
    EXPECT_EQ(manager->createDevice(QStringLiteral("NullDevice"), version),
              qMakePair(Success, qint64(0)));
    EXPECT_EQ(log.lines(), nothing);
    // The entry under 0 is harmless: its lookup gives null.
    EXPECT_EQ(manager->name(0).first, HandleInvalid);
    expectDeleteRefused(0);
}

TEST_F(DeviceFactory, APluginThatClearsThePointerLeavesTheHandleRegistered)
{
    loadFixture(QStringLiteral("ClearsPointer"));
    const DeviceHandle handle = createFixtureDevice(QStringLiteral("ClearsPointer"));
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceFactory, APluginThatExchangesThePointerEndsTheOtherHandle)
{
    class ExchangingScript : public LendingScript
    {
    public:
        ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&pointer) override
        {
            pointer = next;
            return Success;
        }
    };

    BareDevice other([](const Call &) { return Success; });
    ExchangingScript script;
    DeviceScript::use(&script);
    loadFixture(scripted);
    script.next = &device;
    const DeviceHandle first = createFixtureDevice(scripted);
    script.next = &other;
    const DeviceHandle second = createFixtureDevice(scripted);
    EXPECT_EQ(manager->deleteDevice(first), Success);
    EXPECT_EQ(manager->name(first).first, Success);
    EXPECT_EQ(manager->name(second).first, HandleInvalid);
    endManager();
}

TEST_F(DeviceFactory, ARefusalToDestroyIsHandedOutAndKeepsTheHandle)
{
    loadFixture(QStringLiteral("RefusesDestroy"));
    const DeviceHandle handle = createFixtureDevice(QStringLiteral("RefusesDestroy"));
    EXPECT_EQ(manager->deleteDevice(handle), static_cast<ErrorCode>(0x01F10001));
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceFactory, WhatAFactoryThrowsPassesThrough)
{
    const QString name = QStringLiteral("FactoryThrows");
    loadFixture(name);
    EXPECT_EQ(thrownBy([&] { manager->enumDevice(name, version); }), "cannot count");
    EXPECT_EQ(thrownBy([&] { manager->createDevice(name, version); }), "cannot create");
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

TEST_F(DeviceFactory, ADestroyThatThrowsPassesThroughAndKeepsTheHandle)
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
    IFactory *factory(IFactory *root) override { return answers ? root : nullptr; }

    bool answers = true;
};

} // namespace

TEST_F(DeviceFactory, ADeviceWhosePluginIsNoFactoryAnyMoreIsNotDeleted)
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
