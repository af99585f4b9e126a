#include "support/UnloadableFiles.h"

#include <QtCore/QPluginLoader>
#include <gtest/gtest.h>

namespace KvSyncTest {

QString loaderError(const QString &path)
{
    QPluginLoader loader(path);
    EXPECT_EQ(loader.instance(), nullptr);
    return loader.errorString();
}

} // namespace KvSyncTest
