#include "FrameAccount.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace Scanner;

namespace {

constexpr int highest = std::numeric_limits<int>::max();

FrameAccount accountOf(const std::vector<int> &numbers)
{
    FrameAccount account;
    for (const int number : numbers) {
        account.came(number);
        account.delivered();
    }
    return account;
}

qint64 produced(const FrameAccount &account)
{
    return account.toMap().value(QStringLiteral("produced")).toLongLong();
}

qint64 disordered(const FrameAccount &account)
{
    return account.toMap().value(QStringLiteral("disordered")).toLongLong();
}

qint64 lost(const FrameAccount &account)
{
    const QVariantMap causes = account.toMap().value(QStringLiteral("causes")).toMap();
    return causes.value(QStringLiteral("lost")).toLongLong();
}

} // namespace

TEST(FrameAccount, TellsEachCauseAndAddsUp)
{
    FrameAccount account(7);
    account.came(3);
    account.dropped(DropCause::HostSlow, 4);
    account.dropped(DropCause::Unusable);
    account.dropped(DropCause::Stopped, 8);
    account.delivered();
    account.came(3);
    EXPECT_EQ(account.toMap(),
              (QVariantMap{{QStringLiteral("frames"), 7},
                           {QStringLiteral("produced"), 16},
                           {QStringLiteral("delivered"), 1},
                           {QStringLiteral("dropped"), 15},
                           {QStringLiteral("causes"), QVariantMap{{QStringLiteral("lost"), 2},
                                                                  {QStringLiteral("hostSlow"), 4},
                                                                  {QStringLiteral("unusable"), 1},
                                                                  {QStringLiteral("stopped"), 8}}},
                           {QStringLiteral("disordered"), 1}}));
}

TEST(FrameAccount, OfNoFramesIsEmpty)
{
    const QVariantMap empty = FrameAccount().toMap();
    for (const char *const key : {"frames", "produced", "delivered", "dropped", "disordered"})
        EXPECT_EQ(empty.value(QString::fromLatin1(key)), QVariant(0)) << key;
}

TEST(FrameAccount, NumbersInOrderLoseNothing)
{
    const FrameAccount account = accountOf({1, 2, 3});
    EXPECT_EQ(lost(account), 0);
    EXPECT_EQ(disordered(account), 0);
}

TEST(FrameAccount, CountsOnAfterTheHighestNumber)
{
    const FrameAccount account = accountOf({highest, highest, 0});
    EXPECT_EQ(lost(account), highest - 1);
    EXPECT_EQ(produced(account), qint64(highest) + 2);
}

TEST(FrameAccount, TakesALossBackWhenTheFrameComesLate)
{
    const FrameAccount account = accountOf({1, 3, 2});
    EXPECT_EQ(lost(account), 0);
    EXPECT_EQ(produced(account), 3);
    EXPECT_EQ(disordered(account), 1);
}

TEST(FrameAccount, TakesEachNumberOfAGapBackOnce)
{
    EXPECT_EQ(lost(accountOf({6})), 5);
    EXPECT_EQ(lost(accountOf({6, 3})), 4);
    EXPECT_EQ(lost(accountOf({6, 3, 3})), 4);
    EXPECT_EQ(lost(accountOf({6, 3, 1, 5})), 2);
    EXPECT_EQ(lost(accountOf({6, 3, 1, 5, 2, 4})), 0);
    EXPECT_EQ(lost(accountOf({6, 0, -1, 6})), 5);
}

TEST(FrameAccount, RemembersTheLatest64Gaps)
{
    std::vector<int> numbers;
    for (int gap = 1; gap <= 65; ++gap)
        numbers.push_back(2 * gap); // 1, 3, 5, ... 129 are missing
    numbers.push_back(1);
    EXPECT_EQ(lost(accountOf(numbers)), 65);
    numbers.back() = 3;
    EXPECT_EQ(lost(accountOf(numbers)), 64);
}

TEST(FrameAccount, NumbersInOrderPushNoGapOut)
{
    std::vector<int> numbers;
    for (int number = 2; number <= 100; ++number)
        numbers.push_back(number);
    numbers.push_back(1);
    EXPECT_EQ(lost(accountOf(numbers)), 0);
}
