#include "StatusCatcher.h"

#include <chrono>

using namespace Tessel3Sync;

StatusCatcher::StatusCatcher(void *&scanner, Reaction reaction)
    : device(scanner)
    , react(std::move(reaction))
{
    EXPECT_EQ(Ok, SetStatusCallBackFunction(device, &StatusCatcher::receive, this));
}

StatusCatcher::~StatusCatcher()
{
    endCallbacks(SetStatusCallBackFunction(device, nullptr, nullptr));
}

bool StatusCatcher::waitFor(const Events &expected)
{
    std::unique_lock<std::mutex> lock(mutex);
    changed.wait_for(lock, std::chrono::seconds(10),
                     [&] { return caught.size() >= expected.size(); });
    return caught == expected;
}

StatusCatcher::Events StatusCatcher::events() const
{
    std::lock_guard<std::mutex> lock(mutex);
    return caught;
}

void StatusCatcher::receive(const void *const &context, const unsigned char &first,
                            const unsigned char &second)
{
    auto &self = *static_cast<StatusCatcher *>(const_cast<void *>(context));
    {
        std::lock_guard<std::mutex> lock(self.mutex);
        self.caught.emplace_back(first, second);
    }
    if (self.react)
        self.react();
    self.changed.notify_all();
}
