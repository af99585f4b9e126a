#include "SettingForm.h"

#include "Errors.h"
#include "Parameters.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace Scanner {

SettingName::SettingName(const QString &name)
    : plainName(name)
{
    static const QRegularExpression cameraInFront(QStringLiteral("^camera(\\d{1,2})\\.(.*)$"));
    const QRegularExpressionMatch match = cameraInFront.match(name);
    if (!match.hasMatch())
        return;
    camera = match.captured(1).toInt();
    plainName = match.captured(2);
}

QString SettingName::ofCamera(int camera, const QString &plainName)
{
    return QStringLiteral("camera%1.%2").arg(camera).arg(plainName);
}

namespace {

QVariant toVariant(Precision precision, double number)
{
    switch (precision) {
    case Precision::Real:
        break;
    case Precision::Whole:
        return static_cast<int>(number);
    case Precision::Flag:
        return number != 0.0;
    }
    return number;
}

double toNumber(const NumberForm &form, const QString &name, const QVariant &value)
{
    if (form.precision == Precision::Real)
        return realNumberFrom(value, name, form.minimum, form.maximum);
    return wholeNumberFrom(value, name, static_cast<int>(form.minimum),
                           static_cast<int>(form.maximum));
}

} // namespace

QVariant NumberForm::toVariant(const Numbers &numbers) const
{
    if (count == 1)
        return Scanner::toVariant(precision, numbers[0]);
    QVariantList list;
    std::transform(numbers.begin(), numbers.begin() + count, std::back_inserter(list),
                   [&](double number) { return Scanner::toVariant(precision, number); });
    return list;
}

Numbers NumberForm::toNumbers(const QString &name, const QVariant &value) const
{
    Numbers numbers{};
    if (count == 1) {
        numbers[0] = toNumber(*this, name, value);
        return numbers;
    }
    const QVariantList list = value.toList();
    if (list.size() != count)
        raise(InvalidParameter,
              QStringLiteral("%1 must be a list of %2 numbers").arg(name).arg(count));
    for (int place = 0; place < count; ++place)
        numbers[static_cast<std::size_t>(place)] = toNumber(*this, name, list.at(place));
    return numbers;
}

QVariantMap NumberForm::describe() const
{
    return {{QStringLiteral("unit"), QString(unit)},
            {QStringLiteral("minimum"), Scanner::toVariant(precision, minimum)},
            {QStringLiteral("maximum"), Scanner::toVariant(precision, maximum)},
            {QStringLiteral("count"), count}};
}

} // namespace Scanner
