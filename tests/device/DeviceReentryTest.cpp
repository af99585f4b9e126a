// The registry lock is never held while plug-in code runs: a plug-in that uses the manager again
// from each of its operations, from another thread and with the write lock needed, is not blocked.

#include "device/support/DeviceTest.h"
#include "device/support/HandleCheckedOperations.h"

#include <future>

namespace {

using namespace KvSyncTest;
using KvSyncCore::DeviceManager;

// In the order in which they are unloaded: the helper serves until the subject is gone.
const QString subjectName = "Alpha";
const QString helperName = "Beta";

/// Uses the manager from another thread, in a way that reads and writes both tables.
class Visitor
{
public:
    Visitor(DeviceManager *deviceManager, const QVersionNumber &version)
        : manager(deviceManager)
        , pluginVersion(version)
    {
    }

    // Whoever still waits goes on when the lock is free, at the latest here.
    ~Visitor() { pending.clear(); }

    void visit(const std::string &where)
    {
        std::future<bool> round = std::async(std::launch::async, [this] { return goRound(); });
        const bool isBlocked =
            round.wait_for(std::chrono::seconds(20)) != std::future_status::ready;
        EXPECT_FALSE(isBlocked) << where << " runs under the lock";
        if (isBlocked)
            pending.push_back(std::move(round));
        else
            EXPECT_TRUE(round.get()) << where;
        places.push_back(where);
    }

    std::vector<std::string> places;

private:
    bool goRound()
    {
        const auto created = manager->createDevice(helperName, pluginVersion);
        return created.first == Success && manager->name(created.second).first == Success &&
               manager->loadDevicePlugin(helperName, pluginVersion) == Success &&
               manager->enumDevice(helperName, pluginVersion).first == Success &&
               manager->deleteDevice(created.second) == Success;
    }

    DeviceManager *const manager;
    const QVersionNumber pluginVersion;
    std::vector<std::future<bool>> pending;
};

class VisitingScript : public LendingScript
{
public:
    explicit VisitingScript(Visitor &guest)
        : visitor(guest)
    {
    }

    void rootMade() override { visitor.visit("constructor"); }
    void rootGone() override { visitor.visit("destructor"); }

    IFactory *factory(IFactory *root) override
    {
        visitor.visit("qt_metacast");
        return root;
    }

    int enumDevices() override
    {
        visitor.visit("enumDevices");
        return 1;
    }

    BaseDeviceSpace::DeviceInterface *createDevice() override
    {
        visitor.visit("createDevice");
        return next;
    }

    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&) override
    {
        visitor.visit("destroyDevice");
        return Success;
    }

private:
    Visitor &visitor;
};

class DeviceReentry : public DeviceTest
{
protected:
    DeviceReentry()
    {
        copyFixture("Scripted", helperName + ".1.0.1.dll");
        copyFixture("Scripted", subjectName + ".1.0.1.dll");
        lending.next = &helperDevice;
        EXPECT_EQ(manager->loadDevicePlugin(helperName, version), Success);
        DeviceScript::use(&script);
        script.next = &subjectDevice;
    }

    ~DeviceReentry() override { endManager(); }

    DeviceHandle loadAndCreate()
    {
        EXPECT_EQ(manager->loadDevicePlugin(subjectName, version), Success);
        const auto created = manager->createDevice(subjectName, version);
        EXPECT_EQ(created.first, Success);
        visitor.places.clear();
        return created.second;
    }

    Visitor visitor{manager.get(), version};
    VisitingScript script{visitor};
    BareDevice helperDevice{succeed};
    CompleteDevice subjectDevice{[this](const Call &call) {
        visitor.visit(call.operation);
        return Success;
    }};
};

using Places = std::vector<std::string>;

TEST_F(DeviceReentry, IsPossibleInTheConstructorOfTheRootObject)
{
    EXPECT_EQ(manager->loadDevicePlugin(subjectName, version), Success);
    EXPECT_EQ(visitor.places, Places{"constructor"});
}

TEST_F(DeviceReentry, ALoadWithinALoadOfTheSamePluginIsReplacedAndBothSucceed)
{
    // What happens when two threads load one plug-in at once, in a fixed order.
    class Nested : public LendingScript
    {
    public:
        void rootMade() override
        {
            if (++rootCount == 1)
                inner = manager->loadDevicePlugin(subjectName, QVersionNumber(1, 0));
        }

        DeviceManager *manager = nullptr;
        int rootCount = 0;
        ErrorCode inner = HandleInvalid;
    };

    // Not deleted: the loader that is replaced keeps the module, and the root object with it.
    static Nested &nested = *new Nested;
    nested.manager = manager.get();
    DeviceScript::use(&nested);
    EXPECT_EQ(manager->loadDevicePlugin(subjectName, version), Success);
    EXPECT_EQ(nested.inner, Success);
    EXPECT_EQ(nested.rootCount, 2);
    EXPECT_EQ(manager->enumDevice(subjectName, version), qMakePair(Success, 5));
    endManager();
}

TEST_F(DeviceReentry, IsPossibleInTheInterfaceCastAndWhileCounting)
{
    loadAndCreate();
    EXPECT_EQ(manager->enumDevice(subjectName, version).first, Success);
    EXPECT_EQ(visitor.places, (Places{"qt_metacast", "enumDevices"}));
}

TEST_F(DeviceReentry, IsPossibleWhileADeviceIsCreated)
{
    loadAndCreate();
    EXPECT_EQ(manager->createDevice(subjectName, version).first, Success);
    EXPECT_EQ(visitor.places, (Places{"qt_metacast", "createDevice"}));
}

TEST_F(DeviceReentry, IsPossibleWhileADeviceIsDestroyed)
{
    const DeviceHandle handle = loadAndCreate();
    EXPECT_EQ(manager->deleteDevice(handle), Success);
    EXPECT_EQ(visitor.places, (Places{"qt_metacast", "destroyDevice"}));
}

TEST_F(DeviceReentry, IsPossibleWhileTheManagerEnds)
{
    loadAndCreate();
    endManager();
    EXPECT_EQ(visitor.places, (Places{"qt_metacast", "destroyDevice", "destructor"}));
}

TEST_F(DeviceReentry, IsPossibleInEveryOperationOfADevice)
{
    const DeviceHandle handle = loadAndCreate();
    manager->name(handle);
    manager->types(handle);
    Places expected{"name", "types"};
    for (const HandleCheckedOperation &operation : handleCheckedOperations()) {
        operation.invoke(*manager, handle, Sample::Plain);
        expected.emplace_back(operation.name);
    }
    EXPECT_EQ(visitor.places, expected);
    EXPECT_EQ(visitor.places.size(), 35u);
}

} // namespace
