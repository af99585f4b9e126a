// Deliveries that are wrong on purpose, as a host gets them.
#include "ClockFixture.h"

#include <numeric>
#include <optional>
#include <stdexcept>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

namespace {

/// The arguments of one call of the scan callback.
struct RawFrame
{
    std::vector<bool> images; ///< whether there is a buffer
    int width;
    int height;
    Numbers numbers;
    long long sum; ///< of all the bytes that the size promises, in the first image
};

} // namespace

class BadDeliveries : public VirtualScanner
{
protected:
    /// The frames of a scan of some periods under these faults.
    const std::vector<RawFrame> &scan(const std::string &faults, int periods)
    {
        setFaultPlan("{\"faults\": [" + faults + "]}");
        received.clear();
        EXPECT_EQ(Ok, SetScanCallBackFunction(device, receive, this));
        switchOn();
        time.pass(10 * periods + 5);
        switchOff();
        return received;
    }

    Numbers numbersOf(const std::string &faults, int periods)
    {
        Numbers all;
        for (const RawFrame &each : scan(faults, periods))
            all.push_back(each.numbers.at(0));
        return all;
    }

private:
    static void receive(const void *const &context, std::vector<unsigned char *> &images,
                        const int &width, const int &height, std::vector<int> &numbers)
    {
        RawFrame one{{}, width, height, numbers, 0};
        for (const unsigned char *image : images)
            one.images.push_back(image != nullptr);
        const long long size = static_cast<long long>(width) * height;
        if (!images.empty() && images[0] && size > 0)
            one.sum = std::accumulate(images[0], images[0] + size, 0LL);
        const void *self = context;
        static_cast<BadDeliveries *>(const_cast<void *>(self))->received.push_back(one);
    }

    std::vector<RawFrame> received;
};

TEST_F(BadDeliveries, HaveANullPointerForOneBuffer)
{
    const auto all = scan(R"({"frame": 2, "nullImage": 1})", 3);
    ASSERT_EQ(3u, all.size());
    EXPECT_EQ((std::vector<bool>{true, true}), all[0].images);
    EXPECT_EQ((std::vector<bool>{true, false}), all[1].images);
    EXPECT_EQ((Numbers{2, 2}), all[1].numbers);
    EXPECT_EQ((std::vector<bool>{true, true}), all[2].images);
}

TEST_F(BadDeliveries, LackAnImageButNotItsNumber)
{
    const auto all = scan(R"({"frame": 2, "missingImage": 0})", 2);
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ((std::vector<bool>{true}), all[1].images);
    EXPECT_EQ((Numbers{2, 2}), all[1].numbers);
}

TEST_F(BadDeliveries, LeaveAloneAnImageThatIsNotThere)
{
    const auto all = scan(R"({"everyFrame": 1, "missingImage": 2, "nullImage": 2})", 1);
    ASSERT_EQ(1u, all.size());
    EXPECT_EQ((std::vector<bool>{true, true}), all[0].images);
}

TEST_F(BadDeliveries, TellAnotherSize)
{
    const auto all = scan(R"({"frame": 1, "width": 0}, {"frame": 2, "width": -3, "height": -4},
                                {"frame": 3, "width": 8, "height": 4}, {"frame": 4})",
                          4);
    ASSERT_EQ(4u, all.size());
    const auto sizeOf = [&](std::size_t i) { return std::pair(all[i].width, all[i].height); };
    EXPECT_EQ(std::pair(0, 16), sizeOf(0));
    EXPECT_EQ(std::pair(-3, -4), sizeOf(1));
    EXPECT_EQ(std::pair(8, 4), sizeOf(2));
    EXPECT_EQ(std::pair(16, 16), sizeOf(3));
}

TEST_F(BadDeliveries, HoldAsManyBytesAsALargerSizePromises)
{
    const auto all = scan(R"({"frame": 2, "width": 4096, "height": 2000})", 2);
    ASSERT_EQ(2u, all.size());
    EXPECT_EQ(all[0].sum, all[1].sum); // the picture, and zeros
}

TEST_F(BadDeliveries, RepeatTheNumberBefore)
{
    EXPECT_EQ((Numbers{1, 2, 2, 4}), numbersOf(R"({"frame": 3, "number": "twice"})", 4));
}

TEST_F(BadDeliveries, SwapTheirNumberWithTheNext)
{
    EXPECT_EQ((Numbers{1, 3, 2, 4}), numbersOf(R"({"frame": 2, "number": "swapped"})", 4));
}

TEST_F(BadDeliveries, SkipANumberForGood)
{
    EXPECT_EQ((Numbers{1, 3, 4, 6, 7}), numbersOf(R"({"frame": 2, "number": "skipped"},
                                                     {"frame": 4, "number": "skipped"})",
                                                  5));
    EXPECT_EQ((Numbers{1, 2}), numbersOf("", 2));
}

TEST_F(BadDeliveries, GoOnSkippingThatNumberWhenThePlanIsReplaced)
{
    time.at(35, [] { setFaultPlan("{}"); });
    EXPECT_EQ((Numbers{1, 3, 4, 5}), numbersOf(R"({"frame": 2, "number": "skipped"})", 4));
}

TEST_F(BadDeliveries, CanBeScriptedToo)
{
    FrameFault fault;
    fault.nullImage = 0;
    fault.numbering = Numbering::Skipped;
    scriptFrame(1, fault);
    const auto all = scan("", 1);
    ASSERT_EQ(1u, all.size());
    EXPECT_EQ((std::vector<bool>{false, true}), all[0].images);
    EXPECT_EQ((Numbers{2, 2}), all[0].numbers);
    fault.drop = true;
    EXPECT_THROW(scriptFrame(1, fault), std::invalid_argument);
}

TEST_F(BadDeliveries, CountAsDelivered)
{
    scan(R"({"everyFrame": 1, "nullImage": 0, "width": -1, "number": "twice"})", 3);
    EXPECT_EQ((Counted{3, 0, 0, 0, 0, 0}), counted());
}
