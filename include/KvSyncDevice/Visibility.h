#ifndef KVSYNCDEVICE_VISIBILITY_H
#define KVSYNCDEVICE_VISIBILITY_H

// Run-time type information of a contract class must be shared between the core and plug-ins that
// hide their symbols: capabilities are reached by cross-casts. On Windows it is compared by name.
#if defined(_WIN32)
#define KVSYNC_SHARED_TYPE
#else
#define KVSYNC_SHARED_TYPE __attribute__((visibility("default")))
#endif

#endif
