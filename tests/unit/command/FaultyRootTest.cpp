#include "unit/command/CommandManagerFixture.h"

#include <QtCore/QPluginLoader>

#include <stdexcept>

namespace {

using namespace KvSyncTest;

class FaultyRoot : public CommandManagerFixture
{
};

TEST_F(FaultyRoot, OfAnotherInterfaceLoadsAsNullByTheHighestVersionToo)
{
    folder.copyModule(commandFixture("ForeignRoot"), "Demo.1.0.1.dll");
    EXPECT_EQ(manager.loadMaxVersionPlugin("Demo"), nullptr);
    EXPECT_EQ(manager.getCommandInterface("Demo", {1, 0}), nullptr);
    expectLog({loadLine("Demo.1.0.1.dll"), findLine("Demo.1.0")});
}

TEST_F(FaultyRoot, MetadataOfAnotherIdentifierAreNotRead)
{
    folder.copyModule(commandFixture("OtherMetadata"), "Demo.1.0.1.dll");
    CommandInterface *const plugin = manager.load("Demo", {1, 0});
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(plugin->openDevices({}), 0);
}

TEST_F(FaultyRoot, IsAskedForItsInterfaceByLoadingAndNeverAgain)
{
    folder.copyModule(commandFixture("OtherFace"), "Demo.1.0.1.dll");
    CommandInterface *const answer = manager.load("Demo", {1, 0});
    QPluginLoader loader(folder.filePath("Demo.1.0.1.dll"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(static_cast<QObject *>(manager.getCommandInterface("Demo", {1, 0})),
              loader.instance());
    EXPECT_NE(static_cast<QObject *>(answer), loader.instance());
}

TEST_F(FaultyRoot, WhatAConstructorThrowsPassesUnchangedAndIsNotLogged)
{
    folder.copyModule(commandFixture("ConstructorThrows"), "Demo.1.0.1.dll");
    try {
        manager.load("Demo", {1, 0});
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error &error) {
        EXPECT_STREQ(error.what(), "the scanner is switched off");
    }
    expectLog({loadLine("Demo.1.0.1.dll")});
}

TEST_F(FaultyRoot, NothingIsStoredWhenAConstructorThrows)
{
    folder.copyModule(commandFixture("ConstructorThrows"), "Demo.1.0.1.dll");
    EXPECT_THROW(manager.load("Demo", {1, 0}), std::runtime_error);
    expectNotLoaded("Demo", {1, 0}, "Demo.1.0");
    expectNotLoaded("Demo", {}, "Demo.0.0");
}

TEST_F(FaultyRoot, AConstructorThatBehavesTheNextTimeLoads)
{
    folder.copyModule(commandFixture("ConstructorThrows"), "Demo.1.0.1.dll");
    EXPECT_THROW(manager.load("Demo", {1, 0}), std::runtime_error);
    CommandInterface *const plugin = manager.load("Demo", {1, 0});
    EXPECT_NE(plugin, nullptr);
    EXPECT_EQ(manager.getCommandInterface("Demo", {}), plugin);
}

TEST_F(FaultyRoot, ANewerBuildTakesThePlaceOfOneWhoseConstructorThrew)
{
    folder.copyModule(commandFixture("ConstructorThrows"), "Demo.1.0.1.dll");
    EXPECT_THROW(manager.load("Demo", {1, 0}), std::runtime_error);
    provide({"Demo.1.0.2.dll"});
    EXPECT_NE(manager.load("Demo", {1, 0}), nullptr);
}

TEST_F(FaultyRoot, WhatAConstructorThrowsPassesThroughTheHighestVersionToo)
{
    folder.copyModule(commandFixture("ConstructorThrows"), "Demo.1.0.1.dll");
    EXPECT_THROW(manager.loadMaxVersionPlugin("Demo"), std::runtime_error);
    expectNotLoaded("Demo", {}, "Demo.0.0");
}

} // namespace
