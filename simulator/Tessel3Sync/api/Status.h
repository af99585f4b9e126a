#ifndef TESSEL3SYNCSIMULATOR_STATUS_H
#define TESSEL3SYNCSIMULATOR_STATUS_H

#include <Tessel3SyncSimulator/Control.h>

namespace Tessel3SyncSimulator {

using Tessel3Sync::RETSTATUS;

constexpr RETSTATUS Success = Tessel3Sync::RETSTATUS_SUCCESS;

constexpr RETSTATUS refusal(int status)
{
    return static_cast<RETSTATUS>(status);
}

/// The text of a status; unknown ones have one too.
const char *statusText(int status);

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
