// Random sequences of everything that can happen around a scan, against a plain model. Each runs in
// a time of its own; KVSYNC_SCAN_SEQUENCES says how many there are, KVSYNC_SCAN_SEED which is
// first.
#include "ScanModel.h"
#include "ScanPlayer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using Tessel3SyncSimulator::Account;

namespace {

constexpr int usualSequences = 3000;

constexpr long long Account::*fields[] = {
    &Account::produced,      &Account::delivered, &Account::noCallback, &Account::hostSlow,
    &Account::simulatorSlow, &Account::stopped,   &Account::planned,
};

int fromEnvironment(const char *variable, int otherwise)
{
    const char *text = std::getenv(variable);
    return text ? std::atoi(text) : otherwise;
}

/// Both courses up to where they part.
std::string difference(const std::vector<std::string> &scanner,
                       const std::vector<std::string> &model)
{
    std::string text;
    for (std::size_t i = 0; i < std::max(scanner.size(), model.size()); ++i) {
        const std::string one = i < scanner.size() ? scanner[i] : "nothing";
        const std::string other = i < model.size() ? model[i] : "nothing";
        if (one != other)
            return text + "scanner: " + one + "\nmodel:   " + other + "\n";
        text += one + "\n";
    }
    return text;
}

} // namespace

TEST(Sequences, EndAsAPlainModelHasItWhateverTheirCourse)
{
    const int count = fromEnvironment("KVSYNC_SCAN_SEQUENCES", usualSequences);
    const int first = fromEnvironment("KVSYNC_SCAN_SEED", 1);
    Account all;
    for (int seed = first; seed < first + count; ++seed) {
        const Sequence sequence(static_cast<std::uint32_t>(seed));
        ScanModel model(sequence);
        const auto expected = model.run();
        ScanPlayer player(sequence);
        const auto course = player.run();
        ASSERT_TRUE(course == expected) << "seed " << seed << "\n" << difference(course, expected);
        const auto angles = model.tableAngles();
        ASSERT_EQ(angles, ScanPlayer::tableAngles(angles.size())) << "seed " << seed;
        ASSERT_EQ(model.due(), model.account().produced) << "seed " << seed;
        ASSERT_TRUE(model.account().balances()) << "seed " << seed;
        ASSERT_LE(player.longestCallMs(), sequence.boundMs()) << "seed " << seed;
        for (const auto field : fields)
            all.*field += model.account().*field;
    }
    // What never happens shows nothing.
    for (const auto field : fields)
        EXPECT_GT(all.*field, count / 4);
}
