#ifndef KVSYNC_TESTS_JOURNAL_H
#define KVSYNC_TESTS_JOURNAL_H

#include <functional>
#include <string>
#include <vector>

namespace KvSyncTest {

/// Everything that leaves the core while an operation runs, in order: calls of the scanner library,
/// lines of both log channels and bytes of standard output, each as one text.
using Journal = std::vector<std::string>;

Journal journalOf(const std::function<void()> &run);

// The texts of a journal. A call stands as it is: `Project(device, 2)`.

/// Qt lines name the operation whose signature they carry.
std::string debug(const std::string &operation, const std::string &text);
std::string critical(const std::string &operation, const std::string &text);
std::string glogInfo(const std::string &text);
std::string glogError(const std::string &text);
/// One line of standard output; the platform's line end is added.
std::string printed(const std::string &line);

} // namespace KvSyncTest

#endif
