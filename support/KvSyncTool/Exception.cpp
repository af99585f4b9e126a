#include "KvSyncTool/Exception.h"

namespace KvSyncTool {

Exception::Exception(ErrorCode code, const QString &message)
    : errorCode(code)
    , text(message)
    , utf8Text(message.toUtf8())
{
}

Exception::Exception(const Exception &other) = default;

Exception &Exception::operator=(const Exception &other) = default;

Exception::~Exception() noexcept = default;

ErrorCode Exception::code() const
{
    return errorCode;
}

QString Exception::message() const
{
    return text;
}

const char *Exception::what() const noexcept
{
    return utf8Text.constData();
}

void Exception::raise() const
{
    throw *this;
}

Exception *Exception::clone() const
{
    return new Exception(*this);
}

} // namespace KvSyncTool
