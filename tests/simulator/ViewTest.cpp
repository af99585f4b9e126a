#include "render/View.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Tessel3SyncSimulator;

TEST(View, DepthsWithoutLightAreThoseOfTheWholeView)
{
    for (CameraKind camera : {CameraKind::LeftSpeckle, CameraKind::Color}) {
        const ViewKey key{camera, 64, 288, 1, 33.3};
        EXPECT_EQ(View(key).depths, depthsOf(key));
    }
}

TEST(View, NoLightIsCut)
{
    const View view({CameraKind::LeftSpeckle, 640, 512, 1, 0.0});
    for (int light = FlatLight; light < LightCount; ++light) {
        const auto &plane = view.light[light];
        const auto highest = *std::max_element(plane.begin(), plane.end());
        EXPECT_GT(highest, View::fullLight * 0.9) << light;
        // Where it were cut, many pixels would be equal.
        EXPECT_LT(std::count(plane.begin(), plane.end(), highest), 20) << light;
    }
}
