#ifndef KVSYNCCORE_LEAKCHECKER_H
#define KVSYNCCORE_LEAKCHECKER_H

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#include <sanitizer/lsan_interface.h>
#define __SANITIZE_ADDRESS__ 1
#endif
#endif

namespace KvSyncCore {

/// Tells the leak checker that one object, and what it holds, lives until the process ends on
/// purpose. Without a leak checker it does nothing.
inline void keepUntilProcessEnd([[maybe_unused]] const void *object)
{
#if defined(__SANITIZE_ADDRESS__)
    __lsan_ignore_object(object);
#endif
}

} // namespace KvSyncCore

#endif
