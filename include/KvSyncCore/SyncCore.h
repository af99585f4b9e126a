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

/// A host's entry point to the service core.
///
/// A host constructs one, calls init, then loads command plug-ins and executes their functions;
/// the order is not enforced. A QCoreApplication must exist first, since plug-in directories are
/// looked up below the application's folder. Failures are thrown as KvSyncTool::Exception; what a
/// plug-in throws arrives unchanged.
///
/// Threads: call the operations from one thread at a time; no lock is taken. The signal arrives on
/// the thread on which the plug-in emitted it.
class KVSYNCCORE_EXPORT SyncCore : public QObject
{
    Q_OBJECT

public:
    /// Creates the device side and the command side with the directories "Device" and "Logic".
    /// No parent: the host owns the object. Registers the type of the signal's version with Qt, so
    /// that every kind of connection delivers it.
    SyncCore();

    /// Deletes all devices and unloads the device plug-ins. Command plug-ins stay loaded until the
    /// process ends, but their DeviceController is gone. So first close what openDevices opened: a
    /// plug-in may use the controller on its own threads while a device is open. No operation of a
    /// plug-in may be running, here or on another thread; from a slot, call deleteLater() instead.
    /// Plug-ins may still emit while the destructor runs; their slots must not call this object.
    ~SyncCore() override;

    /// Sets both plug-in directories, relative to the application's folder; a later call replaces
    /// them and affects no loaded plug-in. The disk is not accessed.
    ///
    /// Throws `InvalidParameter`, changing nothing, if either is empty or both are equal
    /// (case-sensitive).
    void init(const QString &commandPluginDir, const QString &devicePluginDir);

    /// Loads the newest build of the plug-in's version line (the first two segments of `version`)
    /// and connects its events. Repeating the call does not load again, but connects once more:
    /// after n calls each event arrives n times.
    ///
    /// Throws `InvalidParameter` (empty name or version), `PathNotExist`, `PluginFileNotExist`, or
    /// `PluginLoadFailed` (the file cannot be loaded, or is not a command plug-in).
    void loadCommandPlugin(const QString &pluginName, const QVersionNumber &version);

    /// Returns a loaded plug-in, owned by the core; a null version selects the highest one loaded.
    /// Null if the loaded file is not a command plug-in. Throws `PluginNotLoaded`.
    CommandInterface *getCommandPlugin(const QString &pluginName, const QVersionNumber &version);

    /// Calls one of the twelve functions of a loaded plug-in (see docs/plugin-contract.md) and
    /// returns its result, empty if the function has none. Surplus arguments are ignored; an
    /// argument that cannot be converted becomes 0, false or empty. A null version selects the
    /// highest one loaded.
    ///
    /// Throws `PluginNotLoaded`, `PluginLoadFailed` (loaded, but not a command plug-in),
    /// `FunctionNotExist` or `WrongArgumentCount`, and whatever the plug-in throws.
    QVariant execute(const QString &pluginName, const QString &funcName,
                     const QList<QVariant> &args, const QVersionNumber &version);

Q_SIGNALS:
    /// An event of any loaded command plug-in, relayed untouched on the emitting thread. A slot
    /// must not delete this object: the emitting plug-in may be inside an operation and continue to
    /// use its DeviceController; see docs/threading.md. Nor may a slot throw: Qt does not support
    /// exceptions passing through a signal. The name "verion" is part of the contract.
    void sendSignals(bool isPub, QString pluginName, QString signalName, QVariantList list,
                     QVersionNumber verion);

private:
    SyncCorePrivate *const d;
};

} // namespace KvSyncCore

#endif
