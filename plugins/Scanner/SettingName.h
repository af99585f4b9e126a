#ifndef SCANNER_SETTINGNAME_H
#define SCANNER_SETTINGNAME_H

#include <QtCore/QString>

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

} // namespace Scanner

#endif
