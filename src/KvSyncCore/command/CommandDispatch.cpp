#include "PluginFile.h"
#include "command/CommandManager.h"
#include "command/Raise.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace KvSyncCore {

namespace {

// Every conversion is total: what cannot be converted becomes 0, false or empty.
template <typename T>
struct Argument;

template <>
struct Argument<qint64>
{
    static qint64 from(const QVariant &value) { return qvariant_cast<qint64>(value); }
};

template <>
struct Argument<bool>
{
    static bool from(const QVariant &value) { return value.toBool(); }
};

template <>
struct Argument<const QString &>
{
    static QString from(const QVariant &value) { return value.toString(); }
};

template <>
struct Argument<const QVariantMap &>
{
    static QVariantMap from(const QVariant &value) { return value.toMap(); }
};

template <>
struct Argument<const QVariantList &>
{
    static QVariantList from(const QVariant &value) { return value.toList(); }
};

template <>
struct Argument<const QVariant &>
{
    static const QVariant &from(const QVariant &value) { return value; }
};

// A function of dispatch: its operation's own parameters say how many arguments it needs and how
// each is converted, its result how it is wrapped.
template <auto operation>
struct Call;

template <typename Result, typename... Parameters,
          Result (CommandInterface::*operation)(Parameters...)>
struct Call<operation>
{
    static constexpr int fewestArguments = sizeof...(Parameters);

    static QVariant run(CommandInterface &plugin, const QList<QVariant> &args)
    {
        return run(plugin, args, std::index_sequence_for<Parameters...>());
    }

private:
    template <std::size_t... places>
    static QVariant run(CommandInterface &plugin, [[maybe_unused]] const QList<QVariant> &args,
                        std::index_sequence<places...>)
    {
        if constexpr (std::is_void_v<Result>) {
            (plugin.*operation)(Argument<Parameters>::from(args.at(static_cast<int>(places)))...);
            return {};
        } else {
            return (plugin.*
                    operation)(Argument<Parameters>::from(args.at(static_cast<int>(places)))...);
        }
    }
};

struct Function
{
    QLatin1String name;
    int fewestArguments;
    QVariant (*run)(CommandInterface &plugin, const QList<QVariant> &args);
};

template <auto operation>
constexpr Function function(const char *name)
{
    return {QLatin1String(name), Call<operation>::fewestArguments, &Call<operation>::run};
}

using Plugin = CommandInterface;

// The closed set, in the order in which names are tried. New behaviour goes through "execute".
const Function functions[] = {
    function<&Plugin::getRunningDevList>("getRunningDevList"),
    function<&Plugin::openDevices>("openDevices"),
    function<&Plugin::closeDevices>("closeDevices"),
    function<&Plugin::resetDevices>("resetDevices"),
    function<&Plugin::getProperty>("getProperty"),
    function<&Plugin::setProperty>("setProperty"),
    function<&Plugin::resetInterface>("resetInterface"),
    function<&Plugin::setFlagBitInterface>("setFlagBitInterface"),
    function<&Plugin::project>("project"),
    function<&Plugin::captureImage>("captureImage"),
    function<&Plugin::turntableRotate>("turntableRotate"),
    function<&Plugin::execute>("execute"),
};

} // namespace

QVariant CommandManager::execute(const QString &pluginName, const QString &funcName,
                                 const QList<QVariant> &args, const QVersionNumber &version)
{
    CommandInterface *const plugin = getCommandInterface(pluginName, version);
    if (!plugin)
        KVSYNC_RAISE(PluginLoadFailed,
                     lookupKey(pluginName, version) + QStringLiteral(" is not a command plug-in"));

    const auto found = std::find_if(std::begin(functions), std::end(functions),
                                    [&](const Function &each) { return each.name == funcName; });
    if (found == std::end(functions))
        KVSYNC_RAISE(FunctionNotExist, QString::asprintf("The %s function doesn't exist",
                                                         funcName.toLatin1().constData()));
    if (args.size() < found->fewestArguments)
        KVSYNC_RAISE(WrongArgumentCount,
                     QString::asprintf("The %s function has the wrong number of arguments",
                                       funcName.toLatin1().constData()));
    return found->run(*plugin, args);
}

} // namespace KvSyncCore
