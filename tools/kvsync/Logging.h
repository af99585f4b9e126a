#ifndef KVSYNC_LOGGING_H
#define KVSYNC_LOGGING_H

namespace KvSyncCli {

/// Both log channels of the process: on standard error if verbose, else silent. Nothing is written
/// to log files.
class Logging
{
public:
    explicit Logging(bool verbose);
    ~Logging();
    Logging(const Logging &) = delete;
    Logging &operator=(const Logging &) = delete;
};

} // namespace KvSyncCli

#endif
