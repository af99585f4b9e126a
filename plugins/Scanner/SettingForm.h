#ifndef SCANNER_SETTINGFORM_H
#define SCANNER_SETTINGFORM_H

#include <QtCore/QLatin1String>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <array>
#include <optional>

namespace Scanner {

/// The name of a setting, taken apart. One of a camera has the camera in front, from 0:
/// "camera1.gain".
struct SettingName
{
    explicit SettingName(const QString &name);
    static QString ofCamera(int camera, const QString &plainName);

    std::optional<int> camera; ///< none if the setting is the whole device's
    QString plainName;
};

/// The numbers of one setting; most have one.
using Numbers = std::array<double, 3>;

enum class Precision { Real, Whole, Flag };

/// What the numbers of a setting are, and how they stand in a host's variants.
struct NumberForm
{
    Precision precision;
    QLatin1String unit;
    double minimum;
    double maximum;
    int count; ///< of numbers

    /// A number, or a list of numbers if there are several; a flag is true or false.
    QVariant toVariant(const Numbers &numbers) const;
    /// Throws `InvalidParameter`; `name` is for its text.
    Numbers toNumbers(const QString &name, const QVariant &value) const;
    /// {"unit", "minimum", "maximum", "count"}
    QVariantMap describe() const;
};

} // namespace Scanner

#endif
