#ifndef KVSYNC_TESTS_EXPECTATION_H
#define KVSYNC_TESTS_EXPECTATION_H

#include "DirectLink.h"

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace KvSyncTest {

/// What happens when the scanner library refuses at one of the places where it is called, while it
/// writes its results all the same.
struct Refusal
{
    std::string function;
    std::string outcome;
    std::optional<Journal> journal; ///< unset: the same calls and lines as when accepted
};

/// Everything that one operation of the direct link does with a connected scanner. An outcome is
/// the result code's name, then the out values.
struct Expectation
{
    std::string operation;
    std::function<std::string(KvSyncCore::DeviceController &controller)> run;
    std::string outcome;
    Journal journal;
    std::string unconnectedOutcome; ///< everything is refused and nothing written
    std::vector<Refusal> refusals;  ///< one for each library call, in the order of the calls
};

inline void PrintTo(const Expectation &expectation, std::ostream *stream)
{
    *stream << expectation.operation;
}

std::vector<Expectation> connectionExpectations();
std::vector<Expectation> queryExpectations();
std::vector<Expectation> scanExpectations();
std::vector<Expectation> commandExpectations();
std::vector<Expectation> cameraSettingExpectations();
std::vector<Expectation> lightSettingExpectations();
std::vector<Expectation> captureExpectations();

template <typename... Values>
std::string outcome(ErrorCode code, const Values &...values)
{
    std::ostringstream stream;
    stream << std::boolalpha << KvSyncTool::errorCodeName(code);
    ((stream << ' ' << values), ...);
    return stream.str();
}

} // namespace KvSyncTest

#endif
