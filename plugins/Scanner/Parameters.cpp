#include "Parameters.h"

#include "Errors.h"

#include <cmath>

namespace Scanner {

Parameters::Parameters(const QVariantMap &map)
    : values(map)
{
}

QString Parameters::text(const QString &key) const
{
    const QVariant value = values.value(key);
    if (value.type() != QVariant::String)
        raise(InvalidParameter,
              QStringLiteral("\"%1\" must be a text, not %2").arg(key, shown(value)));
    return value.toString();
}

int Parameters::wholeNumber(const QString &key, int minimum, int maximum) const
{
    return wholeNumberFrom(values.value(key), QStringLiteral("\"%1\"").arg(key), minimum, maximum);
}

std::optional<int> Parameters::optionalWholeNumber(const QString &key, int minimum,
                                                   int maximum) const
{
    if (!values.contains(key))
        return std::nullopt;
    return wholeNumber(key, minimum, maximum);
}

bool Parameters::flag(const QString &key, bool ifMissing) const
{
    return flagFrom(values.value(key, ifMissing), QStringLiteral("\"%1\"").arg(key));
}

QVariantMap Parameters::map(const QString &key) const
{
    const QVariant value = values.value(key, QVariantMap());
    if (value.type() != QVariant::Map)
        raise(InvalidParameter,
              QStringLiteral("\"%1\" must be a map, not %2").arg(key, shown(value)));
    return value.toMap();
}

void Parameters::allowOnly(const QString &owner, const QStringList &keys) const
{
    for (auto entry = values.begin(); entry != values.end(); ++entry) {
        if (!keys.contains(entry.key()))
            raise(InvalidParameter, QStringLiteral("%1 has no parameter \"%2\", but %3")
                                        .arg(owner, entry.key(), keys.join(QStringLiteral(", "))));
    }
}

bool flagFrom(const QVariant &value, const QString &name)
{
    if (value.type() != QVariant::Bool)
        raise(InvalidParameter,
              QStringLiteral("%1 must be true or false, not %2").arg(name, shown(value)));
    return value.toBool();
}

int wholeNumberFrom(const QVariant &value, const QString &name, int minimum, int maximum)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber || number != std::floor(number) || number < minimum || number > maximum)
        raise(InvalidParameter, QStringLiteral("%1 must be a whole number from %2 to %3, not %4")
                                    .arg(name)
                                    .arg(minimum)
                                    .arg(maximum)
                                    .arg(shown(value)));
    return static_cast<int>(number);
}

double realNumberFrom(const QVariant &value, const QString &name, double minimum, double maximum)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber || !(number >= minimum && number <= maximum))
        raise(InvalidParameter, QStringLiteral("%1 must be a number from %2 to %3, not %4")
                                    .arg(name)
                                    .arg(minimum, 0, 'g', 10)
                                    .arg(maximum, 0, 'g', 10)
                                    .arg(shown(value)));
    return number;
}

QString shown(const QVariant &value)
{
    if (!value.isValid())
        return QStringLiteral("nothing");
    if (value.type() == QVariant::List) {
        QStringList elements;
        for (const QVariant &element : value.toList())
            elements.append(shown(element));
        return QStringLiteral("[%1]").arg(elements.join(QStringLiteral(", ")));
    }
    if (value.type() == QVariant::Map) {
        const QVariantMap map = value.toMap();
        QStringList entries;
        for (auto entry = map.begin(); entry != map.end(); ++entry)
            entries.append(QStringLiteral("\"%1\": %2").arg(entry.key(), shown(entry.value())));
        return QStringLiteral("{%1}").arg(entries.join(QStringLiteral(", ")));
    }
    if (!value.canConvert<QString>())
        return QStringLiteral("a %1").arg(QString::fromLatin1(value.typeName()));
    if (value.type() == QVariant::String)
        return QStringLiteral("\"%1\"").arg(value.toString());
    return value.toString();
}

} // namespace Scanner
