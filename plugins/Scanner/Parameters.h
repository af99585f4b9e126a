#ifndef SCANNER_PARAMETERS_H
#define SCANNER_PARAMETERS_H

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>

namespace Scanner {

/// Reads a host's map strictly: what is missing or out of range is `InvalidParameter`, with a text
/// that names the key, the range and what was given.
class Parameters
{
public:
    explicit Parameters(const QVariantMap &map);

    QString text(const QString &key) const;
    int wholeNumber(const QString &key, int minimum, int maximum) const;
    std::optional<int> optionalWholeNumber(const QString &key, int minimum, int maximum) const;
    bool flag(const QString &key, bool ifMissing) const;
    /// Refuses every key but these; `owner` begins the text.
    void allowOnly(const QString &owner, const QStringList &keys) const;
    bool has(const QString &key) const { return values.contains(key); }
    /// Empty if the key is missing.
    QVariantMap map(const QString &key) const;

private:
    const QVariantMap &values;
};

/// `value` as a whole number in the range; `name` is for the text of the failure.
int wholeNumberFrom(const QVariant &value, const QString &name, int minimum, int maximum);

/// The same for true or false.
bool flagFrom(const QVariant &value, const QString &name);

/// The same for a number with places behind the point.
double realNumberFrom(const QVariant &value, const QString &name, double minimum, double maximum);

/// `value` as a text for people, quoted if it is a text.
QString shown(const QVariant &value);

} // namespace Scanner

#endif
