#ifndef KVSYNC_OPTIONS_H
#define KVSYNC_OPTIONS_H

#include "commands/Command.h"

#include <QtCore/QJsonObject>
#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <string>

namespace CLI {
class Option;
} // namespace CLI

namespace KvSyncCli {

// Texts. What is named here outlives the parsing.

/// An option or a positional argument of one text.
CLI::Option *addText(CLI::App &command, const std::string &name, QString &text,
                     const std::string &description);
/// An option that may be repeated, with one text each time.
CLI::Option *addRepeatedText(CLI::App &command, const std::string &name, QStringList &texts,
                             const std::string &description);
/// All further positional arguments, as they stand.
CLI::Option *addFurtherTexts(CLI::App &command, const std::string &name, QStringList &texts,
                             const std::string &description);
/// Refuses an empty text, which would mean the same as none. Returns the option.
CLI::Option *refuseEmpty(CLI::Option *option);

/// The halves of NAME=VALUE.
struct NamedValue
{
    QString name;
    QString value;
};

/// Splits each text at its first equals sign. Throws `InvalidParameter` for one without a name or a
/// sign, and for a name that comes twice.
QList<NamedValue> namedValues(const QStringList &texts);
/// The same, with each value read as JSON.
QVariantMap jsonValues(const QStringList &texts);

/// What may be said of every command that uses a device: which one, and how it prints.
struct DeviceOptions
{
    QString serial;
    QString plugin;  ///< a device plug-in; empty for the directly linked scanner
    QString version; ///< of the plug-in; empty for the newest
    int index = 0;
    bool json = false;

    /// What the Scanner plug-in's openDevices takes. Throws what choosePluginVersion throws.
    QVariantMap address(const PluginDirectories &directories) const;
};

/// For the directly linked scanner: adds "--serial" and "--json".
void addScannerOptions(CLI::App &command, DeviceOptions &options);

/// For a device of a device plug-in: adds "--plugin", "--plugin-version", "--index" and "--json".
void addPluginDeviceOptions(CLI::App &command, DeviceOptions &options);

/// The "types" of a device for people: "camera, motor", or "no capability".
QString typesText(const QVariantMap &device);

/// Prints the text for people, or the object for programs.
void print(Context &context, bool json, const QString &text, const QJsonObject &object);

} // namespace KvSyncCli

#endif
