#include "DirectLink.h"
#include "support/RowName.h"

#include <limits>
#include <memory>

namespace {

using namespace KvSyncTest;
using CameraSpace::ImageBlock;
using ::testing::Contains;
using ::testing::ElementsAre;

constexpr int largestInt = std::numeric_limits<int>::max();
constexpr int smallestInt = std::numeric_limits<int>::min();

unsigned char tenBytes[] = {10, 11, 12, 13, 14, 15, 16, 17, 18, 19};

auto snapshotOf(const std::vector<unsigned char *> &givenImages, int givenWidth, int givenHeight)
{
    return [=](void *&, auto &images, int &width, int &height, const int &, double &, int &,
               Tessel3Sync::CONTROLROUTE) {
        images = givenImages;
        width = givenWidth;
        height = givenHeight;
        return accepted;
    };
}

class Snapshot : public ConnectedScanner
{
protected:
    ~Snapshot() override { qDeleteAll(blocks); }

    Journal take(unsigned int route = 0)
    {
        return journalOf([&] { code = controller.grabImage(anyHandle, route, blocks); });
    }

    QList<ImageBlock *> blocks;
    ErrorCode code = ConnectFailed;
};

TEST_F(Snapshot, OfThreeFullBuffersGivesThreeBlocks)
{
    constexpr int size = 1280 * 1024;
    std::vector<std::vector<unsigned char>> buffers;
    for (unsigned char shade = 1; shade <= 3; ++shade)
        buffers.emplace_back(size, shade);
    scanner.effects.SnapColorImage =
        snapshotOf({buffers[0].data(), buffers[1].data(), buffers[2].data()}, 1280, 1024);
    take();
    EXPECT_EQ(code, Success);
    ASSERT_EQ(blocks.size(), 3);
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(blocks[index]->width, 1280);
        EXPECT_EQ(blocks[index]->height, 1024);
        EXPECT_EQ(blocks[index]->bitDepth, 8);
        EXPECT_EQ(blocks[index]->data, QByteArray(1310720, char(index + 1)));
    }
}

TEST_F(Snapshot, WithoutBuffersGivesNoBlock)
{
    scanner.effects.SnapColorImage = snapshotOf({}, 1280, 1024);
    EXPECT_THAT(take(), Contains(debug("grabImage", "grabImage success")));
    EXPECT_EQ(code, Success);
    EXPECT_TRUE(blocks.isEmpty());
}

TEST_F(Snapshot, IsAppendedToTheBlocksAlreadyThere)
{
    auto *const earlier = new ImageBlock{1, 2, 3, 4, "earlier"};
    blocks.append(earlier);
    scanner.effects.SnapColorImage = snapshotOf({tenBytes}, 5, 2);
    take();
    ASSERT_EQ(blocks.size(), 2);
    EXPECT_EQ(blocks[0], earlier);
    EXPECT_EQ(blocks[1]->data, QByteArray("\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12\x13"));
}

TEST_F(Snapshot, ThatIsRefusedLeavesTheListUntouched)
{
    scanner.effects.SnapColorImage = snapshotOf({tenBytes}, 5, 2);
    scanner.statuses["SnapColorImage"] = refused;
    take();
    EXPECT_EQ(code, CameraFailed);
    EXPECT_TRUE(blocks.isEmpty());
}

TEST_F(Snapshot, CarriesWhatTheLibraryWroteThroughTheConstantReference)
{
    scanner.effects.SnapColorImage = [](void *&, auto &images, int &width, int &height,
                                        const int &fifth, double &sixth, int &seventh,
                                        Tessel3Sync::CONTROLROUTE) {
        const_cast<int &>(fifth) = -77;
        sixth = 1;
        seventh = 2;
        images = {tenBytes};
        width = 1;
        height = 1;
        return accepted;
    };
    take();
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_EQ(blocks[0]->tag, -77);
}

TEST_F(Snapshot, HasATagOfZeroIfTheLibraryWritesNone)
{
    scanner.effects.SnapColorImage = snapshotOf({tenBytes}, 1, 1);
    take();
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_EQ(blocks[0]->tag, 0);
}

TEST_F(Snapshot, IsACopyThatOutlivesTheLibrarysBuffer)
{
    auto buffer = std::make_unique<unsigned char[]>(3);
    buffer[1] = 7;
    scanner.effects.SnapColorImage = snapshotOf({buffer.get()}, 3, 1);
    take();
    buffer.reset();
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_EQ(blocks[0]->data, QByteArray("\0\7\0", 3));
}

TEST_F(Snapshot, CutsTheDimensionsToSixteenBitsButNotTheData)
{
    std::vector<unsigned char> buffer(65537 * 2, 9);
    scanner.effects.SnapColorImage = snapshotOf({buffer.data()}, 65537, 2);
    take();
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_EQ(blocks[0]->width, 1);
    EXPECT_EQ(blocks[0]->height, 2);
    EXPECT_EQ(blocks[0]->data.size(), 131074);
}

TEST_F(Snapshot, TakesANullBufferAsAnEmptyImageAmongTheOthers)
{
    scanner.effects.SnapColorImage = snapshotOf({tenBytes, nullptr, tenBytes}, 2, 1);
    take();
    ASSERT_EQ(blocks.size(), 3);
    EXPECT_EQ(blocks[0]->data, QByteArray("\x0A\x0B"));
    EXPECT_EQ(blocks[1]->data, QByteArray());
    EXPECT_EQ(blocks[1]->width, 2);
    EXPECT_EQ(blocks[2]->data, QByteArray("\x0A\x0B"));
}

TEST_F(Snapshot, PassesEveryBitOfTheRouteOn)
{
    EXPECT_THAT(take(5), Contains("SnapColorImage(device, [], 0, 0, 0, 0, 0, 5)"));
    EXPECT_THAT(take(0xFFFFFFFFu), Contains("SnapColorImage(device, [], 0, 0, 0, 0, 0, -1)"));
}

struct Dimensions
{
    const char *name;
    int width;
    int height;
};

class ImpossibleImage : public ::testing::TestWithParam<Dimensions>
{
protected:
    ImpossibleImage() { link.connect(); }

    DirectLink link;
};

TEST_P(ImpossibleImage, HasNoDataAndTheLowBitsOfItsDimensions)
{
    const auto [name, width, height] = GetParam();
    link.scanner.effects.SnapColorImage = snapshotOf({tenBytes}, width, height);
    QList<ImageBlock *> blocks;
    ErrorCode code = ConnectFailed;
    journalOf([&] { code = link.controller.grabImage(anyHandle, 0, blocks); });
    EXPECT_EQ(code, Success);
    ASSERT_EQ(blocks.size(), 1);
    EXPECT_EQ(blocks[0]->width, static_cast<quint16>(width));
    EXPECT_EQ(blocks[0]->height, static_cast<quint16>(height));
    EXPECT_EQ(blocks[0]->bitDepth, 8);
    EXPECT_EQ(blocks[0]->data, QByteArray());
    qDeleteAll(blocks);
}

INSTANTIATE_TEST_SUITE_P(
    OfAnyKind, ImpossibleImage,
    ::testing::Values(Dimensions{"NoWidth", 0, 10}, Dimensions{"NoHeight", 10, 0},
                      Dimensions{"NegativeWidth", -1, 10}, Dimensions{"NegativeHeight", 10, -1},
                      Dimensions{"BothNegative", -2, -5},
                      Dimensions{"BothSmallest", smallestInt, smallestInt},
                      Dimensions{"ProductOverAnInteger", 65536, 65536},
                      Dimensions{"ProductJustOverAnInteger", 46341, 46341},
                      Dimensions{"BothLargest", largestInt, largestInt},
                      // The largest product of all, and more than an array can hold.
                      Dimensions{"ProductOfTheLargestInteger", largestInt, 1}),
    rowName);

class Projection : public ::testing::TestWithParam<ProjectorSpace::SubPatternType>
{
protected:
    Projection() { link.connect(); }

    DirectLink link;
};

TEST_P(Projection, SendsOnlyTheMajorType)
{
    EXPECT_THAT(journalOf([&] {
                    link.controller.project(anyHandle, ProjectorSpace::MajorPatternType(-3),
                                            GetParam());
                }),
                ElementsAre(debug("project", "project start"), "Project(device, -3)"));
}

INSTANTIATE_TEST_SUITE_P(WithAnySubType, Projection,
                         ::testing::Values(ProjectorSpace::DefaultVariant,
                                           ProjectorSpace::HorizontalVariant,
                                           ProjectorSpace::SubPatternType(12345)));

} // namespace
