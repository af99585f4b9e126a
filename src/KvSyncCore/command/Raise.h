#ifndef KVSYNCCORE_RAISE_H
#define KVSYNCCORE_RAISE_H

#include "KvSyncTool/Exception.h"
#include "LogChannels.h"

/// How the command side fails: the text goes once to the log, if that level is enabled, and leaves
/// with the exception whether or not it was logged. A macro, for the signature in the log.
#define KVSYNC_RAISE(code, text)                                                                   \
    do {                                                                                           \
        const QString raisedText = (text);                                                         \
        KVSYNC_CRITICAL << raisedText;                                                             \
        throw KvSyncTool::Exception((code), raisedText);                                           \
    } while (false)

#endif
