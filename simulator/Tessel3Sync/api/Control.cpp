#include "api/SimulatedLibrary.h"
#include "api/Status.h"

#include <set>
#include <stdexcept>

namespace Tessel3SyncSimulator {

namespace {

void check(const ScannerSetup &setup)
{
    if (!isIn(MinimumSide, setup.width, MaximumSide) ||
        !isIn(MinimumSide, setup.height, MaximumSide))
        throw std::invalid_argument("width and height must be 16 to 4096 pixels");
    if (!isIn(1, setup.triggerPeriodMs, MaximumTriggerPeriodMs))
        throw std::invalid_argument("the trigger period must be 1 to 3600000 milliseconds");
    const std::set<CameraKind> kinds(setup.cameras.begin(), setup.cameras.end());
    if (kinds.size() != setup.cameras.size())
        throw std::invalid_argument("the scanner can have each kind of camera only once");
}

void usePlan(const FaultPlan &plan)
{
    LockedLibrary library;
    if (plan.scanner && library->scanner().isConnected())
        throw std::invalid_argument(
            "fault plan: scanner: cannot be replaced while a host is connected");
    library->usePlan(plan.script);
    if (plan.scanner)
        library->scanner().setSetup(*plan.scanner);
}

} // namespace

void reset(const ScannerSetup &setup)
{
    check(setup);
    LockedLibrary library;
    library->reset(library.lock());
    library->scanner().setSetup(setup);
}

void reset()
{
    LockedLibrary library;
    library->reset(library.lock());
}

ScannerSetup setup()
{
    return LockedLibrary()->scanner().setup();
}

std::vector<Call> calls()
{
    return LockedLibrary()->recorder().calls();
}

void clearCalls()
{
    LockedLibrary()->recorder().clearCalls();
}

int callCount(const std::string &function)
{
    return LockedLibrary()->recorder().count(function);
}

void script(const std::string &function, int call, const Answer &answer)
{
    LockedLibrary library;
    const bool every = call == EveryCall;
    library->script().add(function, Occurrence{every ? 1 : call, every}, answer);
}

void scriptFrame(int frame, const FrameFault &fault)
{
    LockedLibrary()->script().add(Occurrence{frame, false}, fault);
}

void setFaultPlan(const std::string &json)
{
    usePlan(readFaultPlan(json, setup()));
}

void loadFaultPlan(const std::string &file)
{
    usePlan(loadFaultPlan(std::filesystem::u8path(file), setup()));
}

void setHostile(bool hostile)
{
    LockedLibrary()->script().hostile = hostile;
}

void sendStatus(unsigned char first, unsigned char second)
{
    LockedLibrary()->scanner().sendStatus({first, second});
}

void setAttached(bool attached)
{
    LockedLibrary library;
    if (attached)
        library->scanner().attach();
    else
        library->scanner().detach(std::nullopt);
}

void setUserInformationFile(const std::string &file)
{
    LockedLibrary library;
    library->userBlocks() = file.empty() ? UserBlocks() : UserBlocks(std::filesystem::u8path(file));
}

Account account()
{
    return LockedLibrary()->scanner().account();
}

} // namespace Tessel3SyncSimulator
