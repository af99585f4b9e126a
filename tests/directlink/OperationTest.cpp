// Every operation of the direct link against a scanner that accepts, refuses or is not there, by
// one table: the exact calls, lines, prints, codes and out values.

#include "Expectation.h"

#include <QtCore/QLoggingCategory>

#include <algorithm>
#include <iterator>
#include <set>
#include <type_traits>

namespace {

using namespace KvSyncTest;

const std::vector<Expectation> &expectations()
{
    static const std::vector<Expectation> all = [] {
        std::vector<Expectation> joined;
        for (const auto &part : {connectionExpectations(), queryExpectations(), scanExpectations(),
                                 commandExpectations(), cameraSettingExpectations(),
                                 lightSettingExpectations(), captureExpectations()})
            joined.insert(joined.end(), part.begin(), part.end());
        return joined;
    }();
    return all;
}

/// One library call of one operation.
struct Place
{
    Expectation expectation;
    Refusal refusal;
};

void PrintTo(const Place &place, std::ostream *stream)
{
    *stream << place.expectation.operation << " refused by " << place.refusal.function;
}

std::vector<Place> places()
{
    std::vector<Place> all;
    for (const Expectation &expectation : expectations()) {
        for (const Refusal &refusal : expectation.refusals)
            all.push_back({expectation, refusal});
    }
    return all;
}

bool isCall(const std::string &entry)
{
    return entry.rfind("Qt ", 0) != 0 && entry.rfind("glog ", 0) != 0 &&
           entry.rfind("stdout: ", 0) != 0;
}

/// The names of the library's functions, in the order of their calls.
std::vector<std::string> functionsIn(const Journal &journal)
{
    std::vector<std::string> functions;
    for (const std::string &entry : journal) {
        if (isCall(entry))
            functions.push_back(entry.substr(0, entry.find('(')));
    }
    return functions;
}

// The argument types stand in the log, as the compiler spells them.
using KvSyncCore::DeviceManager;
template <auto operation, typename... Arguments>
constexpr bool takes =
    std::is_same_v<decltype(operation), ErrorCode (DeviceManager::*)(Arguments...)>;
static_assert(takes<&DeviceManager::connectDeviceBySerial, qint64, const QString &>);
static_assert(takes<&DeviceManager::setScanCallback, qint64, void *, void *>);
static_assert(takes<&DeviceManager::executeCommand, const QString &, QMap<QString, QVariant> &>);
static_assert(
    takes<&DeviceManager::getGainAndExpo, qint64, unsigned short &, double &, signed char>);
static_assert(
    takes<&DeviceManager::grabImage, qint64, unsigned int, QList<CameraSpace::ImageBlock *> &>);

class DirectLinkOperation : public ::testing::TestWithParam<Expectation>
{
protected:
    DirectLink link;
};

TEST_P(DirectLinkOperation, MakesExactlyItsCallsAndLinesWhenTheScannerAccepts)
{
    link.connect();
    link.scanner.effects = talkativeScanner();
    std::string outcome;
    const Journal journal = journalOf([&] { outcome = GetParam().run(link.controller); });
    EXPECT_EQ(journal, GetParam().journal);
    EXPECT_EQ(outcome, GetParam().outcome);
}

TEST_P(DirectLinkOperation, LeavesOutItsDebugLinesAloneWhereDebugOutputIsOff)
{
    link.connect();
    link.scanner.effects = talkativeScanner();
    QLoggingCategory::setFilterRules("KvSyncTool.debug=false");
    std::string outcome;
    const Journal journal = journalOf([&] { outcome = GetParam().run(link.controller); });
    Journal expected;
    std::copy_if(GetParam().journal.begin(), GetParam().journal.end(), std::back_inserter(expected),
                 [](const std::string &entry) { return entry.rfind("Qt debug", 0) != 0; });
    EXPECT_EQ(journal, expected);
    EXPECT_EQ(outcome, GetParam().outcome);
}

TEST_P(DirectLinkOperation, WithoutAConnectionReachesTheScannerWithANullHandleAndIsRefused)
{
    for (const std::string &function : functionsIn(GetParam().journal))
        link.scanner.statuses[function] = refused;
    std::string outcome;
    const Journal journal = journalOf([&] { outcome = GetParam().run(link.controller); });
    EXPECT_EQ(outcome, GetParam().unconnectedOutcome);
    EXPECT_FALSE(functionsIn(journal).empty());
    EXPECT_THAT(journal, ::testing::Each(::testing::Not(::testing::HasSubstr("(device"))));
}

TEST_P(DirectLinkOperation, SharesTheHandleAtTheManagersHeadWithEveryCallThatTakesItByReference)
{
    link.connect();
    link.scanner.effects = talkativeScanner();
    journalOf([&] { GetParam().run(link.controller); });
    for (const std::string &function : functionsIn(GetParam().journal)) {
        const auto &places = link.scanner.pointerPlaces.at(function);
        if (places.empty())
            continue;
        // One takes the handle itself.
        const std::size_t expected = function == "GetFirewareVersion" ? 0 : 1;
        EXPECT_EQ(places.count(&link.manager), expected) << function;
    }
}

INSTANTIATE_TEST_SUITE_P(All, DirectLinkOperation, ::testing::ValuesIn(expectations()),
                         [](const auto &row) { return row.param.operation; });

class DirectLinkRefusal : public ::testing::TestWithParam<Place>
{
protected:
    DirectLink link;
};

TEST_P(DirectLinkRefusal, GivesTheStatedCodeOutValuesAndLines)
{
    const Expectation &expectation = GetParam().expectation;
    const Refusal &refusal = GetParam().refusal;
    link.connect();
    link.scanner.effects = talkativeScanner();
    link.scanner.statuses[refusal.function] = refused;
    std::string outcome;
    const Journal journal = journalOf([&] { outcome = expectation.run(link.controller); });
    EXPECT_EQ(journal, refusal.journal.value_or(expectation.journal));
    EXPECT_EQ(outcome, refusal.outcome);
}

INSTANTIATE_TEST_SUITE_P(EveryPlace, DirectLinkRefusal, ::testing::ValuesIn(places()),
                         [](const auto &row) {
                             return row.param.expectation.operation + "_refusedBy_" +
                                    row.param.refusal.function;
                         });

TEST(DirectLinkTable, RefusesEveryLibraryCallOfEveryOperation)
{
    for (const Expectation &expectation : expectations()) {
        std::vector<std::string> refusable;
        for (const Refusal &refusal : expectation.refusals)
            refusable.push_back(refusal.function);
        EXPECT_EQ(refusable, functionsIn(expectation.journal)) << expectation.operation;
    }
}

TEST(DirectLinkTable, CoversAllFortyOneFunctionsOfTheLibrary)
{
    std::set<std::string> functions;
    for (const Place &place : places())
        functions.insert(place.refusal.function);
    EXPECT_EQ(functions.size(), 41u);
}

} // namespace
