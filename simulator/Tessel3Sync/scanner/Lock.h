#ifndef TESSEL3SYNCSIMULATOR_LOCK_H
#define TESSEL3SYNCSIMULATOR_LOCK_H

#include <mutex>

namespace Tessel3SyncSimulator {

/// The simulator's one mutex, held.
using Lock = std::unique_lock<std::mutex>;

} // namespace Tessel3SyncSimulator

#endif
