#ifndef KVSYNC_TESTS_UNLOADABLEFILES_H
#define KVSYNC_TESTS_UNLOADABLEFILES_H

#include "support/ApplicationFolder.h"

namespace KvSyncTest {

/// A file that is found as a plug-in and cannot be loaded.
struct UnloadableFile
{
    const char *name;
    void (*provide)(ApplicationFolder &folder, const QString &fileName);
};

inline const UnloadableFile unloadableFiles[] = {
    {"TextFile",
     [](ApplicationFolder &folder, const QString &fileName) { folder.writeText(fileName); }},
    {"EmptyFile",
     [](ApplicationFolder &folder, const QString &fileName) { folder.writeText(fileName, ""); }},
    {"TruncatedModule",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.writeTruncated(commandFixture("Recorder"), fileName);
     }},
    {"MissingLibrary",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.copyModule(commandFixture("MissingLibrary"), fileName);
     }},
    {"NullRoot",
     [](ApplicationFolder &folder, const QString &fileName) {
         folder.copyModule(commandFixture("NullRoot"), fileName);
     }},
};

/// What Qt itself says of such a file.
QString loaderError(const QString &path);

} // namespace KvSyncTest

#endif
