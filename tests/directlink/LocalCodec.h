#ifndef KVSYNC_TESTS_LOCALCODEC_H
#define KVSYNC_TESTS_LOCALCODEC_H

#include <QtCore/QTextCodec>

namespace KvSyncTest {

/// The local 8-bit encoding of the process, while this lives.
class LocalCodec
{
public:
    explicit LocalCodec(const char *name)
        : previous(QTextCodec::codecForLocale())
    {
        QTextCodec *const codec = QTextCodec::codecForName(name);
        Q_ASSERT_X(codec, "LocalCodec", name);
        QTextCodec::setCodecForLocale(codec);
    }
    ~LocalCodec() { QTextCodec::setCodecForLocale(previous); }
    LocalCodec(const LocalCodec &) = delete;
    LocalCodec &operator=(const LocalCodec &) = delete;

private:
    QTextCodec *previous;
};

} // namespace KvSyncTest

#endif
