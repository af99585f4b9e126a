// The library's callback: whatever goes wrong in it, nothing is thrown into the library.
#include "directlink/Callbacks.h"

#include <functional>
#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

using namespace Scanner;
using namespace Scanner::DirectLink;

namespace {

class ThrowingSink : public FrameSink
{
public:
    explicit ThrowingSink(std::function<void()> failure)
        : fail(std::move(failure))
    {
    }

    void take(Frame) override { fail(); }

    void cancel(const ScanEnd &told) override
    {
        end = told;
        if (cancelThrows)
            throw 8;
    }

    ScanEnd end;
    bool cancelThrows = false;

private:
    const std::function<void()> fail;
};

void deliver(FrameReceiver &receiver)
{
    std::vector<unsigned char> pixels(4);
    std::vector<unsigned char *> images{pixels.data()};
    std::vector<int> numbers{1};
    const void *const context = &receiver;
    FrameReceiver::receive(context, images, 2, 2, numbers);
}

} // namespace

TEST(FrameReceiver, WhateverASinkThrowsEndsTheScanAsFailed)
{
    struct Row
    {
        std::function<void()> failure;
        QString text;
    };
    const Row rows[] = {
        {[] { throw 7; }, QStringLiteral("something that is no exception")},
        {[] { throw std::bad_alloc(); }, QStringLiteral("no memory is left")},
        {[] { throw std::runtime_error("full"); }, QStringLiteral("full")},
    };
    for (const Row &row : rows) {
        FrameReceiver receiver;
        const auto sink = std::make_shared<ThrowingSink>(row.failure);
        receiver.begin(sink);
        deliver(receiver);
        EXPECT_EQ(sink->end.reason, EndReason::Failed);
        EXPECT_EQ(sink->end.text, QStringLiteral("A frame could not be taken: ") + row.text);
    }
}

TEST(FrameReceiver, ASinkThatThrowsWhenItIsCancelledIsLoggedAlone)
{
    FrameReceiver receiver;
    const auto sink = std::make_shared<ThrowingSink>([] { throw 7; });
    sink->cancelThrows = true;
    receiver.begin(sink);
    deliver(receiver);
    EXPECT_EQ(sink->end.reason, EndReason::Failed);
}

TEST(FrameReceiver, WithoutASinkFramesAreIgnored)
{
    FrameReceiver receiver;
    deliver(receiver);
    EXPECT_FALSE(receiver.isReceiving());
}
