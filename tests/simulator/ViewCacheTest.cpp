#include "render/ViewCache.h"

#include <gtest/gtest.h>

#include <chrono>
#include <new>

using namespace Tessel3SyncSimulator;
using namespace std::chrono_literals;

class ViewCaching : public testing::Test
{
protected:
    ~ViewCaching() override { release(); }

    static ViewKey key(CameraKind camera, double degrees = 0.0)
    {
        return {camera, 16, 16, 1, degrees};
    }

    /// Lets the views of the color camera, which are held up until then, be made.
    void release()
    {
        if (!released)
            gate.set_value();
        released = true;
    }

    std::promise<void> begun;
    std::promise<void> gate;
    bool released = false;
    int made = 0;

    ViewCache cache{[this](const ViewKey &wanted) {
        ++made;
        if (wanted.camera == CameraKind::Color) {
            begun.set_value();
            gate.get_future().wait();
        }
        return std::make_shared<const View>(wanted);
    }};
};

TEST_F(ViewCaching, TheNewestViewOfEachCameraIsRemembered)
{
    const auto left = cache.view(key(CameraKind::LeftSpeckle));
    const auto right = cache.view(key(CameraKind::RightSpeckle));
    EXPECT_EQ(left, cache.view(key(CameraKind::LeftSpeckle)));
    EXPECT_EQ(left, cache.readyView(key(CameraKind::LeftSpeckle)));
    EXPECT_EQ(2, made);
    EXPECT_NE(left, cache.view(key(CameraKind::LeftSpeckle, 2.0)));
    EXPECT_EQ(nullptr, cache.readyView(key(CameraKind::LeftSpeckle)));
    EXPECT_EQ(right, cache.readyView(key(CameraKind::RightSpeckle)));
}

TEST_F(ViewCaching, AReadyViewIsHandedOutWhileAnotherIsMade)
{
    const auto ready = cache.view(key(CameraKind::LeftSpeckle));
    auto slow = std::async(std::launch::async, [&] { return cache.view(key(CameraKind::Color)); });
    begun.get_future().wait();
    auto quick =
        std::async(std::launch::async, [&] { return cache.view(key(CameraKind::LeftSpeckle)); });
    const bool heldUp = quick.wait_for(10s) != std::future_status::ready;
    EXPECT_FALSE(heldUp);
    EXPECT_TRUE(heldUp || !cache.readyView(key(CameraKind::Color)));
    release();
    EXPECT_EQ(ready, quick.get());
    const auto color = slow.get();
    EXPECT_EQ(color, cache.readyView(key(CameraKind::Color)));
}

TEST_F(ViewCaching, AViewIsMadeOnceForTwoThreads)
{
    auto first = std::async(std::launch::async, [&] { return cache.view(key(CameraKind::Color)); });
    begun.get_future().wait();
    auto second =
        std::async(std::launch::async, [&] { return cache.view(key(CameraKind::Color)); });
    release();
    EXPECT_EQ(first.get(), second.get());
    EXPECT_EQ(1, made);
}

TEST(ViewCache, AViewThatCouldNotBeMadeIsMadeTheNextTime)
{
    bool enoughMemory = false;
    ViewCache cache([&](const ViewKey &wanted) {
        if (!enoughMemory)
            throw std::bad_alloc();
        return std::make_shared<const View>(wanted);
    });
    const ViewKey key{CameraKind::Color, 16, 16, 1, 0.0};
    EXPECT_THROW(cache.view(key), std::bad_alloc);
    EXPECT_EQ(nullptr, cache.readyView(key));
    enoughMemory = true;
    EXPECT_NE(nullptr, cache.view(key));
}
