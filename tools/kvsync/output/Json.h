#ifndef KVSYNC_JSON_H
#define KVSYNC_JSON_H

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace KvSyncCli {

enum class Bytes {
    Summary, ///< {"bytes": number, "sha256": text}
    Base64,  ///< {"base64": text}
};

/// A plug-in's value for programs. 64-bit integers become texts, since JSON numbers lose some of
/// their bits; what JSON has no form for becomes null.
QJsonValue toJson(const QVariant &value, Bytes bytes);

/// Reads one JSON value of any kind. Throws `InvalidParameter`; `name` says in the text what was
/// read.
QVariant parseJson(const QString &text, const QString &name);

/// Indented, with a line end.
QByteArray jsonText(const QJsonObject &object);

/// Of the bytes, in lower-case hexadecimal digits.
QString sha256(const QByteArray &bytes);

} // namespace KvSyncCli

#endif
