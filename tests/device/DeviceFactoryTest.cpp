// Factories that are none, and factories that do what they should not.

#include "device/support/DeviceRegistry.h"

#include <stdexcept>
#include <utility>

namespace {

using namespace KvSyncTest;
using DeviceFactory = DeviceRegistry;

// Root objects that are no factory

TEST_F(DeviceFactory, AnOlderInterfaceIdentifierLoadsAndCountsAsNotLoaded)
{
    loadFixture("OlderFactory");
    expectNotLoaded("OlderFactory", version);
}

TEST_F(DeviceFactory, ACommandPluginLoadsAndCountsAsNotLoaded)
{
    folder.copyModule(commandFixture("Recorder"), "Recorder.1.0.1.dll");
    EXPECT_EQ(manager->loadDevicePlugin("Recorder", version), Success);
    log.clear();
    expectNotLoaded("Recorder", version);
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
    loadFixture("NullDevice");
    EXPECT_EQ(manager->createDevice("NullDevice", version), qMakePair(Success, qint64(0)));
    EXPECT_EQ(log.lines(), nothing);
    // The entry under 0 is harmless: its lookup gives null.
    EXPECT_EQ(manager->name(0).first, HandleInvalid);
    expectDeleteRefused(0);
}

TEST_F(DeviceFactory, APluginThatClearsThePointerLeavesTheHandleRegistered)
{
    loadFixture("ClearsPointer");
    const DeviceHandle handle = createFixtureDevice("ClearsPointer");
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

    BareDevice other(succeed);
    ExchangingScript script;
    const DeviceHandle first = createBy(script);
    script.next = &other;
    const DeviceHandle second = createFixtureDevice(scripted);
    EXPECT_EQ(manager->deleteDevice(first), Success);
    EXPECT_EQ(manager->name(first).first, Success);
    EXPECT_EQ(manager->name(second).first, HandleInvalid);
    endManager();
}

TEST_F(DeviceFactory, ARefusalToDestroyIsHandedOutAndKeepsTheHandle)
{
    loadFixture("RefusesDestroy");
    const DeviceHandle handle = createFixtureDevice("RefusesDestroy");
    EXPECT_EQ(manager->deleteDevice(handle), static_cast<ErrorCode>(0x01F10001));
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(log.lines(), nothing);
}

TEST_F(DeviceFactory, WhatAFactoryThrowsPassesThrough)
{
    const QString name = "FactoryThrows";
    loadFixture(name);
    EXPECT_EQ(thrownBy([&] { manager->enumDevice(name, version); }), "cannot count");
    EXPECT_EQ(thrownBy([&] { manager->createDevice(name, version); }), "cannot create");
    EXPECT_EQ(log.lines(), nothing);
}

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

TEST_F(DeviceFactory, ADestroyThatThrowsPassesThroughAndKeepsTheHandle)
{
    ThrowsOnceScript script;
    const DeviceHandle handle = createBy(script);
    EXPECT_THROW(manager->deleteDevice(handle), std::runtime_error);
    EXPECT_EQ(manager->name(handle).first, Success);
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    endManager();
}

class FickleScript : public LendingScript
{
public:
    IFactory *factory(IFactory *root) override { return answers ? root : nullptr; }

    bool answers = true;
};

TEST_F(DeviceFactory, ADeviceWhosePluginIsNoFactoryAnyMoreIsNotDeleted)
{
    FickleScript script;
    const DeviceHandle handle = createBy(script);
    script.answers = false;
    expectDeleteRefused(handle, "The handle is invalid");
    expectNotLoaded(scripted, version);
    EXPECT_EQ(manager->name(handle).first, Success);
    endManager();
}

} // namespace
