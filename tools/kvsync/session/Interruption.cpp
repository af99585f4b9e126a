#include "session/Interruption.h"

#include "output/Console.h"
#include "session/SignalWatch.h"

#include <utility>

namespace KvSyncCli {

namespace {

constexpr int firstSignalStatus = 128;

} // namespace

Interruption::Interruption()
    : watch(std::make_unique<SignalWatch>([this](int signalNumber) { return begin(signalNumber); }))
{
}

Interruption::~Interruption() = default;

QString Interruption::text() const
{
    return number == 0 ? QString() : QStringLiteral("Ended by ") + signalName(number);
}

int Interruption::exitStatus() const
{
    return firstSignalStatus + number;
}

bool Interruption::begin(int signalNumber)
{
    const std::lock_guard<std::mutex> lock(mutex);
    if (endings.empty())
        return false;
    number = signalNumber;
    // What is under way may hang, and closing too.
    printError(QStringLiteral("%1: closing what is open; a second one ends at once")
                   .arg(signalName(signalNumber)));
    for (const Ending *const each : endings)
        each->end();
    return true;
}

Interruption::Ending::Ending(Interruption &of, std::function<void()> endFunction)
    : interruption(of)
    , end(std::move(endFunction))
{
    const std::lock_guard<std::mutex> lock(interruption.mutex);
    place = interruption.endings.insert(interruption.endings.end(), this);
    if (interruption.number != 0)
        end();
}

Interruption::Ending::~Ending()
{
    const std::lock_guard<std::mutex> lock(interruption.mutex);
    interruption.endings.erase(place);
}

} // namespace KvSyncCli
