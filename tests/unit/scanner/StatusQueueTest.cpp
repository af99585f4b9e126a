#include "directlink/Callbacks.h"

#include <gtest/gtest.h>

using Scanner::DirectLink::StatusQueue;

namespace {

QVariantMap status(int first, int second)
{
    return {{QStringLiteral("first"), first}, {QStringLiteral("second"), second}};
}

} // namespace

TEST(StatusQueue, GivesStatusChangesInTurn)
{
    StatusQueue queue;
    EXPECT_TRUE(queue.push(1, 0));
    EXPECT_TRUE(queue.push(255, 3));
    EXPECT_EQ(queue.pop(), status(1, 0));
    EXPECT_EQ(queue.pop(), status(255, 3));
}

TEST(StatusQueue, HoldsTheLatest64AndTellsOnceHowManyItDroppedBeforeThem)
{
    StatusQueue queue;
    int waiting = 0;
    for (unsigned char number = 1; number <= 67; ++number)
        waiting += queue.push(3, number) ? 1 : 0;
    ASSERT_EQ(waiting, 64);
    QVariantMap oldest = status(3, 4);
    oldest.insert(QStringLiteral("dropped"), 3);
    EXPECT_EQ(queue.pop(), oldest);
    for (int number = 5; number <= 67; ++number)
        EXPECT_EQ(queue.pop(), status(3, number));
}
