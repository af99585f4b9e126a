// The end of the manager, seen from plug-ins that keep a journal.

#include "KvSyncCore/DeviceController.h"
#include "KvSyncCore/SyncCore.h"
#include "device/support/DeviceTest.h"
#include "fixtures/plugins/PlainDevice.h"
#include "fixtures/plugins/Recorder/RecorderControl.h"

#include <array>

namespace {

using namespace KvSyncTest;
using Journal = std::vector<std::string>;

/// Lends devices from one array, so that their order as handles is known.
class JournalScript : public LendingScript
{
public:
    JournalScript(std::string plugin, Journal &pages)
        : name(std::move(plugin))
        , journal(pages)
    {
    }

    void rootGone() override { journal.push_back("unload " + name); }

    ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
    {
        const auto index = static_cast<PlainDevice *>(device) - devices.data();
        journal.push_back("destroy " + std::to_string(index) + " by " + name);
        if (clearsPointer)
            device = nullptr;
        return answer;
    }

    static DeviceHandle handleAt(std::size_t index)
    {
        return static_cast<DeviceHandle>(reinterpret_cast<quintptr>(&devices.at(index)));
    }

    static std::array<PlainDevice, 6> devices;

    bool clearsPointer = false;
    ErrorCode answer = Success;

private:
    const std::string name;
    Journal &journal;
};

std::array<PlainDevice, 6> JournalScript::devices;

class DeviceTeardown : public DeviceTest
{
protected:
    void load(const QString &name, JournalScript &script)
    {
        DeviceScript::use(&script);
        copyFixture("Scripted", name + ".1.0.1.dll");
        ASSERT_EQ(manager->loadDevicePlugin(name, version), Success);
    }

    void create(const QString &name, JournalScript &script, std::size_t device)
    {
        script.next = &JournalScript::devices.at(device);
        ASSERT_EQ(manager->createDevice(name, version).first, Success);
    }

    const QString alphaName = "Alpha";
    const QString betaName = "Beta";
    Journal journal;
    JournalScript alpha{"Alpha", journal};
    JournalScript beta{"Beta", journal};
};

TEST_F(DeviceTeardown, DestroysByAscendingHandleThenUnloadsByKey)
{
    load(betaName, beta);
    load(alphaName, alpha);
    create(betaName, beta, 4);
    create(alphaName, alpha, 2);
    create(alphaName, alpha, 5);
    create(betaName, beta, 0);
    endManager();
    EXPECT_EQ(journal, (Journal{"destroy 0 by Beta", "destroy 2 by Alpha", "destroy 4 by Beta",
                                "destroy 5 by Alpha", "unload Alpha", "unload Beta"}));
}

TEST_F(DeviceTeardown, LeavesOutWhatWasDeletedBefore)
{
    load(alphaName, alpha);
    create(alphaName, alpha, 1);
    create(alphaName, alpha, 3);
    ASSERT_EQ(manager->deleteDevice(JournalScript::handleAt(1)), Success);
    journal.clear();
    endManager();
    EXPECT_EQ(journal, (Journal{"destroy 3 by Alpha", "unload Alpha"}));
}

TEST_F(DeviceTeardown, IgnoresARefusalAndUnloadsAllTheSame)
{
    load(alphaName, alpha);
    load(betaName, beta);
    alpha.answer = static_cast<ErrorCode>(0x01F10001);
    create(alphaName, alpha, 0);
    create(betaName, beta, 1);
    log.clear();
    endManager();
    EXPECT_EQ(journal,
              (Journal{"destroy 0 by Alpha", "destroy 1 by Beta", "unload Alpha", "unload Beta"}));
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceTeardown, DestroysOnceMoreWhatAClearedPointerLeftRegistered)
{
    load(alphaName, alpha);
    alpha.clearsPointer = true;
    create(alphaName, alpha, 0);
    ASSERT_EQ(manager->deleteDevice(JournalScript::handleAt(0)), Success);
    endManager();
    EXPECT_EQ(journal, (Journal{"destroy 0 by Alpha", "destroy 0 by Alpha", "unload Alpha"}));
}

TEST_F(DeviceTeardown, OffersTheNullDeviceToNobody)
{
    load(alphaName, alpha);
    alpha.next = nullptr;
    ASSERT_EQ(manager->createDevice(alphaName, version), qMakePair(Success, qint64(0)));
    log.clear();
    endManager();
    EXPECT_EQ(journal, (Journal{"unload Alpha"}));
    EXPECT_EQ(log.lines(), std::vector{criticalLine("handle is invalid")});
}

TEST_F(DeviceTeardown, UnloadsAPluginThatIsNoFactory)
{
    loadFixture("OlderFactory");
    log.clear();
    endManager();
    EXPECT_EQ(log.lines(), std::vector<LogLine>());
}

TEST_F(DeviceTeardown, APluginMayAskTheManagerWhileItsDeviceIsDestroyed)
{
    class AskingScript : public JournalScript
    {
    public:
        using JournalScript::JournalScript;

        ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
        {
            asked = manager->name(static_cast<DeviceHandle>(reinterpret_cast<quintptr>(device)));
            return JournalScript::destroyDevice(device);
        }

        KvSyncCore::DeviceManager *manager = nullptr;
        QPair<ErrorCode, QString> asked;
    };

    AskingScript script("Alpha", journal);
    script.manager = manager.get();
    load(alphaName, script);
    create(alphaName, script, 0);
    endManager();
    EXPECT_EQ(script.asked, qMakePair(Success, QString("plain")));
}

TEST_F(DeviceTeardown, ADeviceThatAnotherTookAlongIsNotDestroyedTwice)
{
    class FamilyScript : public JournalScript
    {
    public:
        using JournalScript::JournalScript;

        ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
        {
            const ErrorCode code = JournalScript::destroyDevice(device);
            if (device == &devices.front()) {
                EXPECT_EQ(manager->deleteDevice(handleAt(1)), Success);
            }
            return code;
        }

        KvSyncCore::DeviceManager *manager = nullptr;
    };

    FamilyScript script("Alpha", journal);
    script.manager = manager.get();
    load(alphaName, script);
    create(alphaName, script, 0);
    create(alphaName, script, 1);
    log.clear();
    endManager();
    EXPECT_EQ(journal, (Journal{"destroy 0 by Alpha", "destroy 1 by Alpha", "unload Alpha"}));
    EXPECT_EQ(log.lines(), std::vector{criticalLine("handle is invalid")});
}

TEST_F(DeviceTeardown, ADeviceMadeMeanwhileIsLeftToItsPlugin)
{
    class MakingScript : public JournalScript
    {
    public:
        using JournalScript::JournalScript;

        ErrorCode destroyDevice(BaseDeviceSpace::DeviceInterface *&device) override
        {
            next = &devices[5];
            made = manager->createDevice("Alpha", QVersionNumber(1, 0)).first;
            return JournalScript::destroyDevice(device);
        }

        KvSyncCore::DeviceManager *manager = nullptr;
        ErrorCode made = HandleInvalid;
    };

    MakingScript script("Alpha", journal);
    script.manager = manager.get();
    load(alphaName, script);
    create(alphaName, script, 0);
    endManager();
    EXPECT_EQ(script.made, Success);
    EXPECT_EQ(journal, (Journal{"destroy 0 by Alpha", "unload Alpha"}));
}

TEST_F(DeviceTeardown, ARootObjectThatCallsBackAtItsEndFindsEarlierPluginsGone)
{
    class AskingScript : public JournalScript
    {
    public:
        using JournalScript::JournalScript;

        void rootGone() override
        {
            JournalScript::rootGone();
            const QString earlier = "Alpha";
            const QVersionNumber line(1, 0);
            enumerated = manager->enumDevice(earlier, line);
            created = manager->createDevice(earlier, line);
            named = manager->name(handleAt(0)).first;
            deleted = manager->deleteDevice(handleAt(0));
            // It counts as loaded to the end, so that it does not come back.
            loaded = manager->loadDevicePlugin(earlier, line);
        }

        KvSyncCore::DeviceManager *manager = nullptr;
        QPair<ErrorCode, int> enumerated;
        QPair<ErrorCode, qint64> created;
        ErrorCode named = Success;
        ErrorCode deleted = Success;
        ErrorCode loaded = PluginLoadFailed;
    };

    AskingScript later("Beta", journal);
    later.manager = manager.get();
    load(betaName, later);
    load(alphaName, alpha);
    // A device that refuses to go is there until its plug-in goes.
    alpha.answer = static_cast<ErrorCode>(0x01F10001);
    create(alphaName, alpha, 0);
    endManager();
    EXPECT_EQ(later.enumerated, qMakePair(PluginNotLoaded, 0));
    EXPECT_EQ(later.created, qMakePair(PluginNotLoaded, qint64(0)));
    EXPECT_EQ(later.named, HandleInvalid);
    EXPECT_EQ(later.deleted, HandleInvalid);
    EXPECT_EQ(later.loaded, Success);
    EXPECT_EQ(journal, (Journal{"destroy 0 by Alpha", "unload Alpha", "unload Beta"}));
}

TEST_F(DeviceTeardown, APluginThatARootObjectLoadsAtItsEndIsUnloadedToo)
{
    class LoadingScript : public JournalScript
    {
    public:
        LoadingScript(Journal &pages, JournalScript &loaded)
            : JournalScript("Beta", pages)
            , late(loaded)
        {
        }

        void rootGone() override
        {
            JournalScript::rootGone();
            DeviceScript::use(&late);
            EXPECT_EQ(manager->loadDevicePlugin("Alpha", QVersionNumber(1, 0)), Success);
        }

        KvSyncCore::DeviceManager *manager = nullptr;

    private:
        JournalScript &late;
    };

    LoadingScript loading(journal, alpha);
    loading.manager = manager.get();
    copyFixture("Scripted", "Alpha.1.0.1.dll");
    load(betaName, loading);
    endManager();
    EXPECT_EQ(journal, (Journal{"unload Beta", "unload Alpha"}));
}

TEST_F(DeviceTeardown, AFileOfTwoPluginsIsUnloadedWithTheLast)
{
    // One file under two keys: a name in another case finds the same one.
    load(alphaName, alpha);
    ASSERT_EQ(manager->loadDevicePlugin("ALPHA", version), Success);
    load(betaName, beta);
    endManager();
    EXPECT_EQ(journal, (Journal{"unload Alpha", "unload Beta"}));
}

TEST_F(DeviceTeardown, TheEndOfTheSyncCoreEndsItsDevicesThenItsPlugins)
{
    DeviceScript::use(&alpha);
    folder.makeFolder("Logic");
    folder.makeFolder("Device");
    folder.copyModule(commandFixture("Recorder"), "Logic/Recorder.1.0.1.dll");
    copyFixture("Scripted", "Device/Alpha.1.0.1.dll");
    {
        KvSyncCore::SyncCore core;
        core.init(folder.name() + "/Logic", folder.name() + "/Device");
        core.loadCommandPlugin("Recorder", version);
        auto *const control =
            qobject_cast<RecorderControl *>(core.getCommandPlugin("Recorder", version));
        ASSERT_TRUE(control);
        KvSyncCore::DeviceController *const controller = control->controllers().last();
        ASSERT_EQ(controller->loadDevicePlugin(alphaName, version), Success);
        alpha.next = &JournalScript::devices[3];
        ASSERT_EQ(controller->createDevice(alphaName, version).first, Success);
    }
    EXPECT_EQ(journal, (Journal{"destroy 3 by Alpha", "unload Alpha"}));
}

} // namespace
