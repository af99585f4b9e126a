#ifndef KVSYNC_TESTS_UNPRIVILEGED_H
#define KVSYNC_TESTS_UNPRIVILEGED_H

#include <QtCore/QString>

#include <functional>

namespace KvSyncTest {

/// Runs the function on a thread that has given up root's rights, which whatever it starts lacks
/// too: root reads everything. On Windows nothing needs giving up.
void runUnprivileged(const std::function<void()> &function);

/// What the function returns when it runs so.
template <typename Function>
auto unprivileged(Function function)
{
    decltype(function()) result{};
    runUnprivileged([&] { result = function(); });
    return result;
}

/// While it lives, the file cannot be read: on Windows it is held open, unshared; elsewhere it has
/// no permissions, which root does not need.
class UnreadableFile
{
public:
    explicit UnreadableFile(const QString &path);
    ~UnreadableFile();
    UnreadableFile(const UnreadableFile &) = delete;
    UnreadableFile &operator=(const UnreadableFile &) = delete;

private:
    const QString filePath;
#ifdef Q_OS_WIN
    void *const handle;
#endif
};

} // namespace KvSyncTest

#endif
