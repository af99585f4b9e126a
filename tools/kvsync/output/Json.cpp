#include "output/Json.h"

#include <KvSyncTool/Exception.h>
#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QVersionNumber>

namespace KvSyncCli {

namespace {

QJsonValue bytesToJson(const QByteArray &data, Bytes bytes)
{
    if (bytes == Bytes::Base64)
        return QJsonObject{{QStringLiteral("base64"), QString::fromLatin1(data.toBase64())}};
    return QJsonObject{{QStringLiteral("bytes"), data.size()},
                       {QStringLiteral("sha256"), sha256(data)}};
}

QJsonValue listToJson(const QVariantList &list, Bytes bytes)
{
    QJsonArray array;
    for (const QVariant &element : list)
        array.append(toJson(element, bytes));
    return array;
}

QJsonValue mapToJson(const QVariantMap &map, Bytes bytes)
{
    QJsonObject object;
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        object.insert(entry.key(), toJson(entry.value(), bytes));
    return object;
}

// Whole numbers come out of JSON with 64 bits; those that need no more than 32 stay numbers.
QVariant narrowed(const QVariant &value)
{
    if (value.userType() == QMetaType::LongLong) {
        const qint64 number = value.toLongLong();
        const int narrow = static_cast<int>(number);
        return narrow == number ? QVariant(narrow) : value;
    }
    if (value.userType() == QMetaType::QVariantList) {
        QVariantList list = value.toList();
        for (QVariant &element : list)
            element = narrowed(element);
        return list;
    }
    if (value.userType() == QMetaType::QVariantMap) {
        QVariantMap map = value.toMap();
        for (QVariant &element : map)
            element = narrowed(element);
        return map;
    }
    return value;
}

} // namespace

QJsonValue toJson(const QVariant &value, Bytes bytes)
{
    switch (value.userType()) {
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return value.toString();
    case QMetaType::QByteArray:
        return bytesToJson(value.toByteArray(), bytes);
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return listToJson(value.toList(), bytes);
    case QMetaType::QVariantMap:
        return mapToJson(value.toMap(), bytes);
    default:
        break;
    }
    if (value.userType() == qMetaTypeId<QVersionNumber>())
        return value.value<QVersionNumber>().toString();
    return QJsonValue::fromVariant(value);
}

QVariant parseJson(const QString &text, const QString &name)
{
    // A document is a list or an object; any value is one within a list.
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson("[" + text.toUtf8() + "]", &error);
    if (document.isNull())
        throw KvSyncTool::Exception(
            InvalidParameter,
            QStringLiteral("%1 is not JSON: %2: %3").arg(name, error.errorString(), text));
    if (document.array().size() != 1)
        throw KvSyncTool::Exception(InvalidParameter,
                                    QStringLiteral("%1 is not one JSON value: %2").arg(name, text));
    return narrowed(document.array().first().toVariant());
}

QByteArray jsonText(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Indented);
}

QString sha256(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

} // namespace KvSyncCli
