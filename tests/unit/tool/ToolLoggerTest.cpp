#include "KvSyncTool/ToolLogger.h"
#include "support/CriticalLinesOff.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

namespace {

using namespace KvSyncTest;
using KvSyncTool::ToolLogger;

TEST(ToolLogger, IsTheSameCategoryEveryTime)
{
    EXPECT_EQ(&ToolLogger(), &ToolLogger());
}

TEST(ToolLogger, IsNamedAfterItsLibrary)
{
    EXPECT_STREQ(ToolLogger().categoryName(), "KvSyncTool");
}

TEST(ToolLogger, TakesLinesOfEveryLevelByDefault)
{
    EXPECT_TRUE(ToolLogger().isDebugEnabled());
    EXPECT_TRUE(ToolLogger().isCriticalEnabled());
}

TEST(ToolLogger, StandsInTheLinesThatAreWrittenToIt)
{
    const LogCapture log;
    qCDebug(ToolLogger) << "by a host";
    ASSERT_EQ(log.lines(), std::vector{debugLine("by a host")});
    EXPECT_EQ(log.lines().front().category, "KvSyncTool");
}

TEST(ToolLogger, IsSilencedByAFilterRuleOfItsName)
{
    {
        const CriticalLinesOff off;
        EXPECT_FALSE(ToolLogger().isCriticalEnabled());
    }
    EXPECT_TRUE(ToolLogger().isCriticalEnabled());
}

} // namespace
