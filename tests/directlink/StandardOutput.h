#ifndef KVSYNC_TESTS_STANDARDOUTPUT_H
#define KVSYNC_TESTS_STANDARDOUTPUT_H

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <string>

namespace KvSyncTest {

/// Turns the process's standard output into a file while it lives, and reads it as bytes: what a
/// host would find in its own log file, line ends of the platform included.
class StandardOutput
{
public:
    StandardOutput();
    ~StandardOutput();
    StandardOutput(const StandardOutput &) = delete;
    StandardOutput &operator=(const StandardOutput &) = delete;

    /// What was written since the last call.
    std::string takeNew();

private:
    QTemporaryDir folder;
    QFile written;
    int savedDescriptor;
};

} // namespace KvSyncTest

#endif
