// Where light falls: distance, shadows and the size of the patterns.
#include "PictureStack.h"
#include "PictureTools.h"

#include <algorithm>
#include <cmath>

using namespace Tessel3Sync;
using namespace Tessel3SyncSimulator;

namespace {

constexpr Point strobe{0.0, 0.0, 0.0};
constexpr Point projector{0.0, -30.0, 0.0};
constexpr Point tableCentre{0.0, 0.0, 640.0};
constexpr Point tableUp{0.0, -0.6, -0.8};

} // namespace

class Lighting : public Scanner
{
protected:
    Lighting() { begin(320, 256); }

    void begin(int width, int height)
    {
        ScannerSetup setup = smallSetup();
        setup.width = width;
        setup.height = height;
        reset(setup);
        connect();
        ambient = taken();
        left = calibration(CameraKind::LeftSpeckle);
        right = calibration(CameraKind::RightSpeckle);
        leftDepth = trueDepth(CameraKind::LeftSpeckle);
        rightDepth = trueDepth(CameraKind::RightSpeckle);
    }

    std::vector<double> taken()
    {
        const PictureStack stack(device, 16);
        std::vector<double> means(stack.size());
        for (std::size_t i = 0; i < means.size(); ++i)
            means[i] = stack.mean(i);
        return means;
    }

    /// What the lights that are switched on now add to the left picture.
    std::vector<double> added()
    {
        auto means = taken();
        for (std::size_t i = 0; i < means.size(); ++i)
            means[i] -= ambient[i];
        return means;
    }

    std::vector<double> addedByFlatLight()
    {
        Project(device, static_cast<PROJECTWORKTYPES>(ProjectorFlat));
        auto light = added();
        Project(device, PROJECTWORKTYPES_OFF);
        return light;
    }

    std::vector<double> addedByStrobe()
    {
        SetStrobeControlledByTrigger(device, CONTROLROUTE_SCAN, STROBE_STATE_SCAN);
        SetStrobeDutioRatio(device, 0, 60, 0);
        auto light = added();
        SetStrobeControlledByTrigger(device, static_cast<CONTROLROUTE>(0), STROBE_STATE_SCAN);
        return light;
    }

    Point point(std::size_t pixel) const
    {
        return worldPoint(left, pixelAt(pixel, left.width, leftDepth[pixel]));
    }

    /// Height above the table.
    static double height(const Point &place) { return dot(between(tableCentre, place), tableUp); }

    bool isOnTable(std::size_t pixel, double radius) const
    {
        const Point place = point(pixel);
        const Point offset = between(tableCentre, place);
        return std::abs(height(place)) < 0.01 && dot(offset, offset) < radius * radius;
    }

    /// What a light of strength 1 at 600 mm gives the table.
    static double expected(const Point &place, const Point &light)
    {
        const Point way = between(place, light);
        const double square = dot(way, way);
        return dot(way, tableUp) / std::sqrt(square) * 360000.0 / square;
    }

    static bool isBehind(const Calibration &camera, const std::vector<float> &depth,
                         const Point &place)
    {
        const Pixel seen = pictureOf(camera, place);
        if (seen.x < 0 || seen.y < 0 || seen.x >= camera.width - 1 || seen.y >= camera.height - 1)
            return false;
        return seen.depth > sampled(depth, camera.width, seen.x, seen.y) + 1.0;
    }

    /// Whether something that both cameras see stands between the place and the light.
    bool isInTheWay(const Point &place, const Point &light) const
    {
        const Point way = between(place, light);
        for (double part = 0.002; part < 0.4; part += 0.002) {
            const Point between{place[0] + way[0] * part, place[1] + way[1] * part,
                                place[2] + way[2] * part};
            if (isBehind(left, leftDepth, between) && isBehind(right, rightDepth, between))
                return true;
        }
        return false;
    }

    void expectShadows(const std::vector<double> &light, const Point &source) const
    {
        const double full = *std::max_element(light.begin(), light.end());
        int shadows = 0;
        int agreed = 0;
        int looked = 0;
        for (std::size_t i = 0; i < light.size(); i += 5) {
            if (!isOnTable(i, 400.0))
                continue;
            const bool isDark = light[i] < 0.05 * full * expected(point(i), source);
            ++looked;
            shadows += isDark;
            agreed += isDark == isInTheWay(point(i), source);
        }
        EXPECT_GT(shadows, 50);
        EXPECT_GT(agreed, looked * 99 / 100) << looked << " pixels, " << shadows << " dark";
    }

    std::vector<double> ambient;
    Calibration left;
    Calibration right;
    std::vector<float> leftDepth;
    std::vector<float> rightDepth;
};

TEST_F(Lighting, FallsOffWithTheSquareOfTheDistanceAndWithTheSlant)
{
    const auto light = addedByStrobe();
    std::vector<double> ratios;
    for (std::size_t i = 0; i < light.size(); ++i) {
        if (isOnTable(i, 115.0) && light[i] > 20.0)
            ratios.push_back(light[i] / expected(point(i), strobe));
    }
    ASSERT_GT(ratios.size(), 3000u);
    const auto [least, most] = std::minmax_element(ratios.begin(), ratios.end());
    EXPECT_LT(*most / *least, 1.05);
}

TEST_F(Lighting, OfTheStrobeCastsShadows)
{
    expectShadows(addedByStrobe(), strobe);
}

TEST_F(Lighting, OfTheProjectorCastsShadows)
{
    expectShadows(addedByFlatLight(), projector);
}

TEST_F(Lighting, OfPatternsLasersAndInfraredLeavesTheProjectorsShadowDark)
{
    const auto flat = addedByFlatLight();
    std::vector<std::size_t> shadow;
    for (std::size_t i = 0; i < flat.size(); ++i) {
        if (isOnTable(i, 150.0) && flat[i] < 1.0)
            shadow.push_back(i);
    }
    ASSERT_GT(shadow.size(), 200u);

    const auto expectDark = [&](const char *name) {
        const auto light = added();
        EXPECT_GT(*std::max_element(light.begin(), light.end()), 50.0) << name;
        for (std::size_t pixel : shadow)
            EXPECT_LT(light[pixel], 1.5) << name << " at " << pixel;
    };
    Project(device, static_cast<PROJECTWORKTYPES>(ProjectorSpeckle));
    expectDark("speckle");
    Project(device, static_cast<PROJECTWORKTYPES>(ProjectorStripes));
    expectDark("stripes");
    Project(device, PROJECTWORKTYPES_OFF);
    EnableIRLaser(device, true);
    expectDark("infrared");
    EnableIRLaser(device, false);
    EnableBlueLaser(device, static_cast<LASERWORKMODE>(LaserCrossedLines), true);
    expectDark("lasers");
}

TEST_F(Lighting, OfTheStripesHasOneSizeAtEveryResolution)
{
    constexpr double pitch = 7.02 / 600.0; // millimetres at 600 mm
    for (int width : {160, 320, 640}) {
        begin(width, width * 4 / 5);
        const auto flat = addedByFlatLight();
        Project(device, static_cast<PROJECTWORKTYPES>(ProjectorStripes));
        const auto stripes = added();
        double bright = 0.0;
        double dark = 0.0;
        for (std::size_t i = 0; i < flat.size(); ++i) {
            const Point way = between(projector, point(i));
            const double pitches = way[0] / way[2] / pitch;
            const double fromLine = std::abs(pitches - std::round(pitches));
            if (flat[i] > 20.0 && fromLine < 0.1)
                bright = std::max(bright, stripes[i] / flat[i]);
            if (flat[i] > 20.0 && fromLine > 0.4)
                dark = std::max(dark, stripes[i] / flat[i]);
        }
        EXPECT_LT(dark, 0.5 * bright) << width;
    }
}

TEST_F(Lighting, OfTheSpeckleHasOneSizeAtEveryResolution)
{
    constexpr std::size_t coarse = 320;
    constexpr std::size_t factor = 4;
    const auto speckle = [&](std::size_t columns) {
        const int width = static_cast<int>(columns);
        begin(width, width * 4 / 5);
        Project(device, static_cast<PROJECTWORKTYPES>(ProjectorSpeckle));
        return added();
    };
    const auto seenFinely = speckle(coarse * factor);
    const auto seenCoarsely = speckle(coarse);
    std::vector<std::pair<double, double>> pairs;
    for (std::size_t i = 0; i < seenCoarsely.size(); ++i) {
        if (!isOnTable(i, 115.0))
            continue;
        const std::size_t x = i % coarse * factor;
        const std::size_t y = i / coarse * factor;
        double sum = 0.0;
        for (std::size_t j = 0; j < factor * factor; ++j)
            sum += seenFinely[(y + j / factor) * coarse * factor + x + j % factor];
        pairs.emplace_back(sum / (factor * factor), seenCoarsely[i]);
    }
    ASSERT_GT(pairs.size(), 3000u);
    EXPECT_GT(correlation(pairs), 0.9);
}
