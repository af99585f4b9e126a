#ifndef KVSYNCCORE_SCANNERSTATUS_H
#define KVSYNCCORE_SCANNERSTATUS_H

#include "KvSyncTool/ErrorCode.h"
#include "Tessel3Sync/Tessel3Sync.h"

namespace KvSyncCore {

/// The status rule of the direct link: 7 is success, every other status the operation's failure.
constexpr ErrorCode resultOf(Tessel3Sync::RETSTATUS status, ErrorCode failure)
{
    return status == Tessel3Sync::RETSTATUS_SUCCESS ? Success : failure;
}

} // namespace KvSyncCore

#endif
