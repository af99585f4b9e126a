#include "SettingName.h"

#include <QtCore/QRegularExpression>

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

} // namespace Scanner
