#ifndef KVSYNCCORE_COMMANDINTERFACE_H
#define KVSYNCCORE_COMMANDINTERFACE_H

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVersionNumber>

namespace KvSyncCore {
class DeviceController;
}

/// The interface identifier by which the core recognizes a command plug-in's root object.
#define CommandInterface_iid "Veltrano.CommandInterface_v1.0.0.20200424"

/// The root object of a command plug-in: the scanner's high-level functions.
///
/// The root class has CommandInterface as its first base, names it in Q_INTERFACES and carries
/// Q_PLUGIN_METADATA(IID CommandInterface_iid). The order of the virtual operations is a binary
/// contract, counted after QObject's eleven: no overloads, nothing inserted, nothing after
/// `execute`.
///
/// The core creates one object per plug-in and version line; it never deletes the object and never
/// unloads the plug-in. It calls on the host's thread and takes no lock. What an operation throws
/// reaches the host unchanged; KvSyncTool::Exception is the type that hosts expect.
///
/// A handle is the 64-bit number that openDevices returned. Arguments are converted as QVariant
/// does: the text "12" arrives as 12, anything that cannot be converted as 0. The plug-in defines
/// the meaning of names, maps and lists.
class CommandInterface : public QObject
{
    Q_OBJECT

public:
    explicit CommandInterface(QObject *parent = nullptr)
        : QObject(parent)
    {
    }

    /// Overrides QObject's; adds no slot.
    ~CommandInterface() override = default;

    /// Receives access to the device side on every loadCommandPlugin, even if the plug-in was
    /// loaded before. The controller belongs to the SyncCore and dies with it: do not use it
    /// afterwards. Hosts close all devices first, but the plug-in is not notified, so its own
    /// threads may use the controller only while a device is open.
    virtual void setDeviceController(KvSyncCore::DeviceController *controller) = 0;

    /// The devices that are open or available.
    virtual QVariantList getRunningDevList() = 0;
    /// Opens the device described by `parameters` and returns its handle.
    virtual qint64 openDevices(const QVariantMap &parameters) = 0;
    virtual void closeDevices(qint64 handle) = 0;
    virtual void resetDevices(qint64 handle) = 0;
    virtual QVariant getProperty(qint64 handle, const QString &name, const QVariant &value) = 0;
    virtual void setProperty(qint64 handle, const QString &name, const QVariant &value) = 0;
    virtual void resetInterface(qint64 handle, const QString &name) = 0;
    virtual void setFlagBitInterface(qint64 handle, const QString &name, bool flag) = 0;
    virtual void project(qint64 handle, const QString &pattern) = 0;
    /// Captures images of the given kind; returns one element per image.
    virtual QVariantList captureImage(qint64 handle, const QString &kind,
                                      const QVariantMap &parameters) = 0;
    virtual void turntableRotate(qint64 handle, const QString &name, const QVariantMap &parameters,
                                 bool flag) = 0;
    /// Commands that have no function of their own.
    virtual QVariant execute(qint64 handle, const QString &command,
                             const QVariantList &arguments) = 0;

Q_SIGNALS:
    /// An event. The core relays all five arguments untouched, on the emitting thread. To connect
    /// to it across threads in a process without a SyncCore, call
    /// qRegisterMetaType<QVersionNumber>() first. The name "verion" is part of the contract.
    void sendSignals(bool isPub, QString pluginName, QString signalName, QVariantList list,
                     QVersionNumber verion);
};

Q_DECLARE_INTERFACE(CommandInterface, CommandInterface_iid)

#endif
