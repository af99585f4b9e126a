#ifndef KVSYNC_TESTS_ROWNAME_H
#define KVSYNC_TESTS_ROWNAME_H

#include <string>

namespace KvSyncTest {

/// Names the tests of a table after the `name` of their rows.
inline constexpr auto rowName = [](const auto &row) { return std::string(row.param.name); };

} // namespace KvSyncTest

#endif
