#ifndef KVSYNC_TESTS_EXPECTTHROWS_H
#define KVSYNC_TESTS_EXPECTTHROWS_H

#include "KvSyncTool/Exception.h"

#include <QtCore/QString>
#include <gtest/gtest.h>

namespace KvSyncTest {

/// Fails unless `callable` throws KvSyncTool::Exception with exactly this code and text.
template <typename Callable>
void expectThrows(ErrorCode code, const QString &text, Callable callable)
{
    try {
        callable();
        ADD_FAILURE() << "nothing thrown instead of \"" << text.toStdString() << '"';
    } catch (const KvSyncTool::Exception &exception) {
        EXPECT_EQ(exception.code(), code);
        EXPECT_EQ(exception.message().toStdString(), text.toStdString());
    }
}

} // namespace KvSyncTest

#endif
