#include "directlink/Frame.h"

#include <gtest/gtest.h>
#include <limits>

using namespace Scanner;
using namespace Scanner::DirectLink;

namespace {

constexpr int largest = std::numeric_limits<int>::max();

Frame frameOf(int width, int height)
{
    static unsigned char pixel = 'x';
    return copyFrame({&pixel}, width, height, {1});
}

} // namespace

TEST(Frame, CopiesThePixels)
{
    const Frame frame = frameOf(1, 1);
    EXPECT_TRUE(frame.isWhole);
    EXPECT_EQ(frame.images.at(0).pixels, QByteArray("x"));
}

TEST(Frame, WhoseImagesNoByteArrayHoldsIsNotWhole)
{
    for (const auto &[width, height] : {std::pair(largest, 1), std::pair(1, largest - 31),
                                        std::pair(largest, largest), std::pair(0, 1)}) {
        const Frame frame = frameOf(width, height);
        EXPECT_FALSE(frame.isWhole) << width << " x " << height;
        EXPECT_TRUE(frame.images.at(0).pixels.isEmpty());
    }
}
