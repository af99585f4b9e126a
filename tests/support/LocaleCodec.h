#ifndef KVSYNC_TESTS_LOCALECODEC_H
#define KVSYNC_TESTS_LOCALECODEC_H

#include <QtCore/QTextCodec>

namespace KvSyncTest {

/// While it lives, "local 8-bit" means the named encoding; on Linux file names follow it too.
class LocaleCodec
{
public:
    explicit LocaleCodec(const char *name)
        : previous(QTextCodec::codecForLocale())
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~LocaleCodec() { QTextCodec::setCodecForLocale(previous); }
    LocaleCodec(const LocaleCodec &) = delete;
    LocaleCodec &operator=(const LocaleCodec &) = delete;

private:
    QTextCodec *const previous;
};

} // namespace KvSyncTest

#endif
