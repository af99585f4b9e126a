#ifndef KVSYNCTOOL_EXCEPTION_H
#define KVSYNCTOOL_EXCEPTION_H

#include "KvSyncTool/ErrorCode.h"
#include "KvSyncTool/Export.h"

#include <QtCore/QByteArray>
#include <QtCore/QException>
#include <QtCore/QString>

namespace KvSyncTool {

/// The system's one exception type: an error code and a human-readable text.
///
/// The core's command side throws it, command plug-ins may throw it, and it reaches the host
/// unchanged. It may be caught as QException and as std::exception. Every member may be called
/// from any thread that holds the object.
class KVSYNCTOOL_EXPORT Exception : public QException
{
public:
    /// Carries both arguments unchanged.
    Exception(ErrorCode code, const QString &message);
    Exception(const Exception &other);
    Exception &operator=(const Exception &other);
    ~Exception() noexcept override;

    /// The code given at construction.
    ErrorCode code() const;
    /// The text given at construction; it may be empty.
    QString message() const;

    /// The text in UTF-8; it lives as long as this object.
    const char *what() const noexcept override;
    /// Throws a copy of this object.
    void raise() const override;
    /// A copy that the caller owns.
    Exception *clone() const override;

private:
    ErrorCode errorCode;
    QString text;
    QByteArray utf8Text;
};

} // namespace KvSyncTool

#endif
