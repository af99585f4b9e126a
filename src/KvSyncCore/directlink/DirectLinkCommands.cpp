#include "GlogChannel.h"
#include "LogChannels.h"
#include "device/DeviceManager.h"
#include "directlink/ScannerStatus.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace KvSyncCore {

using namespace Tessel3Sync;

namespace {

enum class Kind { None, Number, Flag };

struct Key
{
    Kind kind = Kind::None;
    const char *name = nullptr;
};

constexpr Key number(const char *name)
{
    return {Kind::Number, name};
}

constexpr Key flag(const char *name)
{
    return {Kind::Flag, name};
}

constexpr int maximumKeys = 3;

struct Scanner
{
    DeviceManager &manager;
    void *&device;
    QMap<QString, QVariant> &parameters;
    int values[maximumKeys] = {}; ///< in the order of the row's keys; a flag is 0 or 1
};

struct Command
{
    QLatin1String name;
    Key keys[maximumKeys]; ///< in the order in which they are read
    RETSTATUS (*run)(Scanner &scanner);
    const char *logPrefix = nullptr; ///< of the line after the call; null: the command logs nothing
};

RETSTATUS runStartScan(Scanner &s)
{
    s.manager.startScan(s.parameters);
    return RETSTATUS_SUCCESS;
}

RETSTATUS runStopScan(Scanner &s)
{
    s.manager.stopScan();
    return RETSTATUS_SUCCESS;
}

template <typename Enumeration>
Enumeration as(int value)
{
    return static_cast<Enumeration>(value);
}

// The spellings "Dutio" and "disStauts" are part of the contract.
// clang-format off
const Command commands[] = {
    {QLatin1String("startScan"), {}, runStartScan},
    {QLatin1String("stopScan"), {}, runStopScan},
    {QLatin1String("Project"),
     {number("projectWorkType")},
     [](Scanner &s) { return Project(s.device, as<PROJECTWORKTYPES>(s.values[0])); }},
    {QLatin1String("SetStrobeControlledByTrigger"),
     {number("controlRoute"), number("strobeState")},
     [](Scanner &s) { return SetStrobeControlledByTrigger(s.device, as<CONTROLROUTE>(s.values[0]),
                                                          as<STROBE_STATE>(s.values[1])); }},
    {QLatin1String("EnableBlueLaser"),
     {number("laserWorkMode"), flag("bLaserEnable")},
     [](Scanner &s) { return EnableBlueLaser(s.device, as<LASERWORKMODE>(s.values[0]),
                                             s.values[1] != 0); },
     " EnableBlueLaser |"},
    {QLatin1String("EnableIRLaser"),
     {flag("bIRLaserEnable")},
     [](Scanner &s) { return EnableIRLaser(s.device, s.values[0] != 0); },
     ""},
    {QLatin1String("SetVideoTriggerPeriod"),
     {number("triggerPeriod")},
     [](Scanner &s) { return SetVideoTriggerPeriod(s.device, s.values[0]); }},
    {QLatin1String("EnableVideoTrigger"),
     {number("cameraTriggerMode"), flag("bEnable")},
     [](Scanner &s) { return EnableVideoTrigger(s.device, as<CAMERA_TRIGGER_MODE>(s.values[0]),
                                                s.values[1] != 0); }},
    // The last two are read in one order and passed in the other: part of the contract.
    {QLatin1String("SetStrobeDutioRatio"),
     {number("TexDutioRatio"), number("dutioRatioWithTex"), number("dutioRatio")},
     [](Scanner &s) { return SetStrobeDutioRatio(s.device, s.values[0], s.values[2],
                                                 s.values[1]); }},
    {QLatin1String("SetLaserLineDutioRatio"),
     {number("dutioRatio")},
     [](Scanner &s) { return SetLaserLineDutioRatio(s.device, s.values[0]); }},
    {QLatin1String("SetProjectDutioRatio"),
     {number("dutioRatio")},
     [](Scanner &s) { return SetProjectDutioRatio(s.device, s.values[0]); }},
    {QLatin1String("SetIRLaserDutioRatio"),
     {number("dutioRatio")},
     [](Scanner &s) { return SetIRLaserDutioRatio(s.device, s.values[0]); }},
    {QLatin1String("SetDistanceIndicate"),
     {number("disStauts")},
     [](Scanner &s) { return SetDistanceIndicate(s.device, as<DISTANCESTATUS>(s.values[0])); }},
};
// clang-format on

// Subscripts add the missing keys to the caller's map: part of the contract.
void readParameters(const Command &command, Scanner &scanner)
{
    int place = 0;
    for (const Key &key : command.keys) {
        if (key.kind == Kind::None)
            break;
        const QVariant &value = scanner.parameters[QLatin1String(key.name)];
        scanner.values[place++] = key.kind == Kind::Flag ? int(value.toBool()) : value.toInt();
    }
}

// " key: value" of every parameter, flags in the stream's own words.
template <typename Stream>
void streamParameters(Stream &stream, const Command &command, const Scanner &scanner)
{
    int place = 0;
    for (const Key &key : command.keys) {
        if (key.kind == Kind::None)
            break;
        stream << ' ' << key.name << ": ";
        const int value = scanner.values[place++];
        if (key.kind == Kind::Flag)
            stream << (value != 0);
        else
            stream << value;
    }
}

QString parametersText(const Command &command, const Scanner &scanner)
{
    QString text;
    QDebug stream(&text);
    stream.nospace();
    streamParameters(stream, command, scanner);
    return text;
}

// Qt's own format of a map, in which texts stay quoted.
QString mapText(const QMap<QString, QVariant> &parameters)
{
    QString text;
    QDebug(&text).nospace() << parameters;
    return text;
}

} // namespace

ErrorCode DeviceManager::executeCommand(const QString &command, QMap<QString, QVariant> &parameters)
{
    // Says success before anything runs: part of the contract.
    KVSYNC_DEBUG << "cmdName:" << command << ",value:" << mapText(parameters)
                 << ", func default success";
    const auto found = std::find_if(std::begin(commands), std::end(commands),
                                    [&](const Command &each) { return each.name == command; });
    // An unknown name runs nothing and succeeds: part of the contract.
    if (found == std::end(commands))
        return Success;

    Scanner scanner{*this, libraryDevice, parameters};
    readParameters(*found, scanner);
    if (found->logPrefix)
        KVSYNC_DEBUG << parametersText(*found, scanner);
    const RETSTATUS status = found->run(scanner);
    if (found->logPrefix) {
        std::ostringstream values;
        streamParameters(values, *found, scanner);
        // "retSatus" is part of the contract.
        KVSYNC_GLOG_INFO << found->logPrefix << values.str()
                         << " retSatus: " << static_cast<int>(status);
    }
    return resultOf(status, CommandFailed);
}

} // namespace KvSyncCore
