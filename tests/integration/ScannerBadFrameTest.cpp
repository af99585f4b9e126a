// What the Scanner plug-in makes of deliveries that a faulty library gets wrong: each ends as a
// frame that the host can tell from a good one, and in the account.
#include "ScannerHost.h"

#include <algorithm>
#include <set>

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerBadFrame : public ScannerHost
{
protected:
    ScannerBadFrame() { open(); }

    /// The images of so many frames under a fault.
    QVariantList scan(const std::string &fault, int count)
    {
        Simulator::setFaultPlan("{\"faults\": [" + fault + "]}");
        const QVariantList images = capture({{"frames", count}, {"periodMs", 20}});
        account = lastOf("progress");
        EXPECT_EQ(account.value("delivered"), QVariant(count));
        EXPECT_TRUE(balances(account));
        return images;
    }

    static QVariantMap image(const QVariantList &images, int index)
    {
        return images.value(index).toMap();
    }

    static int bytesOf(const QVariantMap &image)
    {
        return image.value("data").toByteArray().size();
    }

    static QList<int> numbers(const QVariantList &images)
    {
        QList<int> all;
        for (const QVariant &each : images) {
            if (each.toMap().value("camera").toInt() == 0)
                all.append(each.toMap().value("frame").toInt());
        }
        return all;
    }

    /// A busy machine loses frames of its own, so the account is held against the numbers that
    /// came.
    void expectAccountOf(const QList<int> &came) const
    {
        int highest = 0;
        int late = 0;
        for (const int number : came) {
            late += number <= highest ? 1 : 0;
            highest = std::max(highest, number);
        }
        const std::set<int> different(came.begin(), came.end());
        EXPECT_EQ(account.value("disordered"), QVariant(late));
        EXPECT_EQ(droppedBy(account, "lost"), highest - int(different.size()));
    }

    static constexpr int wholeImage = 160 * 128;
    QVariantMap account;
};

TEST_F(ScannerBadFrame, ThatLacksAnImageOrItsPixelsIsDroppedAndCounted)
{
    // Which image is missing nobody can tell, so none of the others can be given a camera.
    for (const char *const fault :
         {R"("nullImage": 0)", R"("nullImage": 1)", R"("missingImage": 0)", R"("missingImage": 1)",
          R"("width": 0)", R"("height": 0)", R"("width": -160)",
          R"("width": -160, "height": -128)"}) {
        const QVariantList images = scan(std::string(R"({"everyFrame": 2, )") + fault + "}", 3);
        ASSERT_EQ(images.size(), 6) << fault;
        for (int i = 0; i < images.size(); ++i) {
            EXPECT_EQ(image(images, i).value("camera"), QVariant(i % 2)) << fault;
            EXPECT_EQ(bytesOf(image(images, i)), wholeImage) << fault;
        }
        for (const int number : numbers(images))
            EXPECT_EQ(number % 2, 1) << fault;
        EXPECT_GT(droppedBy(account, "unusable"), 0) << fault;
    }
}

TEST_F(ScannerBadFrame, WithoutAnyImageIsDroppedAndCounted)
{
    Simulator::setFaultPlan("{}");
    call("closeDevices", {scannerHandle});
    Simulator::setFaultPlan(R"({"scanner": {"cameras": ["left"]}})");
    open();
    EXPECT_EQ(scan(R"({"everyFrame": 2, "missingImage": 0})", 2).size(), 2);
    EXPECT_GT(droppedBy(account, "unusable"), 0);
}

TEST_F(ScannerBadFrame, OfAnotherSizeIsPassedOnAsItIsTold)
{
    const QVariantMap larger =
        image(scan(R"({"everyFrame": 1, "width": 4096, "height": 4096})", 1), 0);
    EXPECT_EQ(larger.value("width"), QVariant(4096));
    EXPECT_EQ(bytesOf(larger), 4096 * 4096);
    const QVariantMap smaller = image(scan(R"({"everyFrame": 1, "width": 1, "height": 1})", 1), 0);
    EXPECT_EQ(bytesOf(smaller), 1);
}

TEST_F(ScannerBadFrame, ThatComesTwiceIsDisordered)
{
    const QList<int> came = numbers(scan(R"({"everyFrame": 2, "number": "twice"})", 6));
    for (const int number : came)
        EXPECT_EQ(number % 2, 1); // 1, 1, 3, 3, ...
    expectAccountOf(came);
}

TEST_F(ScannerBadFrame, ThatComesBeforeItsPredecessorIsDisorderedAndNotLost)
{
    expectAccountOf(numbers(scan(R"({"everyFrame": 2, "number": "swapped"})", 7)));
}

TEST_F(ScannerBadFrame, WhoseNumberIsSkippedCountsAsLost)
{
    const QList<int> came = numbers(scan(R"({"everyFrame": 2, "number": "skipped"})", 6));
    for (const int number : came)
        EXPECT_NE(number % 3, 2); // 1, 3, 4, 6, ...
    expectAccountOf(came);
    EXPECT_EQ(account.value("produced"), QVariant(came.last()));
}
