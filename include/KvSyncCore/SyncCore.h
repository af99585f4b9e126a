#ifndef KVSYNCCORE_SYNCCORE_H
#define KVSYNCCORE_SYNCCORE_H

#include "KvSyncCore/CommandInterface.h"
#include "KvSyncCore/Export.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVersionNumber>

namespace KvSyncCore {

class SyncCorePrivate;

/// The one object through which a host reaches the service core.
///
/// A host constructs one, calls init, then loads command plug-ins and executes their functions.
/// Nothing enforces the order. A QCoreApplication must exist first: plug-in directories stand below
/// its folder. Failures arrive as KvSyncTool::Exception; what a plug-in throws arrives unchanged.
///
/// Threads: call the operations from one thread at a time; nothing here takes a lock. The signal
/// arrives on the thread that the plug-in emitted from.
class KVSYNCCORE_EXPORT SyncCore : public QObject
{
    Q_OBJECT

public:
    /// Builds the device side and the command side with the directories "Device" and "Logic".
    /// No parent: the host owns the object. From here on Qt knows the type of the signal's version,
    /// so that every kind of connection delivers it.
    SyncCore();

    /// Deletes all devices and unloads the device plug-ins. Command plug-ins stay loaded until the
    /// process ends; their DeviceController is gone. So close what openDevices opened first: a
    /// plug-in may use the controller on threads of its own while a device is open. And no
    /// operation of a plug-in may be running, here or on another thread; from a slot, call
    /// deleteLater() instead. While it runs, plug-ins may still emit: slots hear it, but must not
    /// call this object any more.
    ~SyncCore() override;

    /// Sets both plug-in directories, names below the application's folder; a later call replaces
    /// them and touches no loaded plug-in. Nothing is looked up on disk here.
    ///
    /// Throws `InvalidParameter`, changing nothing, if either is empty or both are equal (upper and
    /// lower case differ).
    void init(const QString &commandPluginDir, const QString &devicePluginDir);

    /// Loads the newest build of the plug-in's version line (the first two segments of `version`)
    /// and connects its events. Repeating the call loads nothing again, but connects once more: n
    /// calls make each event arrive n times.
    ///
    /// Throws `InvalidParameter` (empty name or version), `PathNotExist`, `PluginFileNotExist`, or
    /// `PluginLoadFailed` (the file cannot be loaded, or is not a command plug-in).
    void loadCommandPlugin(const QString &pluginName, const QVersionNumber &version);

    /// A loaded plug-in, which the core keeps; a null version means the highest one loaded. Null if
    /// the file that was loaded is not a command plug-in. Throws `PluginNotLoaded`.
    CommandInterface *getCommandPlugin(const QString &pluginName, const QVersionNumber &version);

    /// Calls one of the twelve functions of a loaded plug-in (see docs/plugin-contract.md) and
    /// returns its result, empty where the function has none. Surplus arguments are ignored; an
    /// argument that cannot be converted becomes 0, false or empty. A null version means the
    /// highest one loaded.
    ///
    /// Throws `PluginNotLoaded`, `PluginLoadFailed` (loaded, but not a command plug-in),
    /// `FunctionNotExist` or `WrongArgumentCount`, and whatever the plug-in throws.
    QVariant execute(const QString &pluginName, const QString &funcName,
                     const QList<QVariant> &args, const QVersionNumber &version);

Q_SIGNALS:
    /// An event of any loaded command plug-in, relayed untouched on the emitting thread. A slot
    /// must not delete this object: the plug-in that emits may be inside an operation, and goes on
    /// to use its DeviceController; see docs/threading.md. Nor may it throw, since Qt does not
    /// promise to carry that. The name "verion" is known to tools that read it: keep it.
    void sendSignals(bool isPub, QString pluginName, QString signalName, QVariantList list,
                     QVersionNumber verion);

private:
    SyncCorePrivate *const d;
};

} // namespace KvSyncCore

#endif
