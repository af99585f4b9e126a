#ifndef SCANNER_COMMANDINFO_H
#define SCANNER_COMMANDINFO_H

#include <QtCore/QLatin1String>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>
#include <utility>
#include <vector>

namespace Scanner {

/// One parameter of a command, as far as it is known.
struct ParameterInfo
{
    const char *name;
    const char *type; ///< "int", "bool", "text", "bytes" or "map"
    const char *unit = "";
    std::optional<std::pair<int, int>> range = std::nullopt; ///< least and greatest value
};

QStringList namesOf(const std::vector<ParameterInfo> &parameters);

/// A command of `execute`, as the host is told of it.
struct CommandInfo
{
    const char *name;
    const char *form; ///< "map": one map with these keys; "list": values in this order
    std::vector<ParameterInfo> parameters = {};

    /// {"name", "form", "parameters": [{"name", "type", "unit", "minimum", "maximum"}]}; unit and
    /// range are missing where there is none or none is known.
    QVariantMap describe() const;
};

/// The description of the command that lists the commands.
CommandInfo listingCommand();

} // namespace Scanner

#endif
