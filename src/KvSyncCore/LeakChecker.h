#ifndef KVSYNCCORE_LEAKCHECKER_H
#define KVSYNCCORE_LEAKCHECKER_H

// GCC says it by a macro, clang by a feature.
#if defined(__SANITIZE_ADDRESS__)
#define KVSYNC_LEAK_CHECKER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KVSYNC_LEAK_CHECKER
#endif
#endif

#if defined(KVSYNC_LEAK_CHECKER)
#include <sanitizer/lsan_interface.h>
#endif

namespace KvSyncCore {

/// Tells the leak checker that one object, and what it holds, lives until the process ends on
/// purpose. Without a leak checker it does nothing.
inline void keepUntilProcessEnd([[maybe_unused]] const void *object)
{
#if defined(KVSYNC_LEAK_CHECKER)
    __lsan_ignore_object(object);
#endif
}

} // namespace KvSyncCore

#endif
