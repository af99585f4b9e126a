#include "api/Simulator.h"
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
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    if (plan.scanner && simulator.scanner().isConnected())
        throw std::invalid_argument(
            "fault plan: scanner: cannot be replaced while a host is connected");
    simulator.usePlan(plan.script);
    if (plan.scanner)
        simulator.scanner().setSetup(*plan.scanner);
}

} // namespace

void reset(const ScannerSetup &setup)
{
    check(setup);
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    simulator.reset(lock);
    simulator.scanner().setSetup(setup);
}

void reset()
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    simulator.reset(lock);
}

ScannerSetup setup()
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    return simulator.scanner().setup();
}

std::vector<Call> calls()
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    return simulator.recorder().calls();
}

void clearCalls()
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    simulator.recorder().clearCalls();
}

int callCount(const std::string &function)
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    return simulator.recorder().count(function);
}

void script(const std::string &function, int call, const Answer &answer)
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    const bool every = call == EveryCall;
    simulator.script().add(function, Occurrence{every ? 1 : call, every}, answer);
}

void scriptFrame(int frame, const FrameFault &fault)
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    simulator.script().add(Occurrence{frame, false}, fault);
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
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    simulator.script().hostile = hostile;
}

void sendStatus(unsigned char first, unsigned char second)
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    simulator.scanner().sendStatus({first, second});
}

void setAttached(bool attached)
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    if (attached)
        simulator.scanner().attach();
    else
        simulator.scanner().detach(std::nullopt);
}

void setUserInformationFile(const std::string &file)
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    simulator.userBlocks() =
        file.empty() ? UserBlocks() : UserBlocks(std::filesystem::u8path(file));
}

Account account()
{
    Simulator &simulator = Simulator::instance();
    Lock lock = simulator.enter();
    return simulator.scanner().account();
}

} // namespace Tessel3SyncSimulator
