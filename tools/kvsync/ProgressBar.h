#ifndef KVSYNC_PROGRESSBAR_H
#define KVSYNC_PROGRESSBAR_H

namespace KvSyncCli {

/// A bar on standard error while something long runs; nothing at all if that is no terminal.
class ProgressBar
{
public:
    ProgressBar();
    /// Ends the line.
    ~ProgressBar();
    ProgressBar(const ProgressBar &) = delete;
    ProgressBar &operator=(const ProgressBar &) = delete;

    void show(int done, int dropped, int all);

private:
    const bool isShown;
    bool isDrawn = false;
};

} // namespace KvSyncCli

#endif
