#ifndef TESSEL3SYNCSIMULATOR_RANGES_H
#define TESSEL3SYNCSIMULATOR_RANGES_H

#include "Status.h"

namespace Tessel3SyncSimulator {

constexpr bool isIn(int lowest, int value, int highest)
{
    return lowest <= value && value <= highest;
}

/// Sets a setting, or refuses the value and leaves the setting as it is.
inline RETSTATUS setIfIn(int lowest, int value, int highest, int &setting)
{
    if (!isIn(lowest, value, highest))
        return refusal(OutOfRange);
    setting = value;
    return Success;
}

} // namespace Tessel3SyncSimulator

#endif
