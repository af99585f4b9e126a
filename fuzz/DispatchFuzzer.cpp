// Any function name with any arguments: dispatch calls the operation of that name exactly once, or
// calls none and fails with one of its two codes.

#include "KvSyncTool/Exception.h"
#include "Require.h"
#include "command/CommandManager.h"
#include "fixtures/plugins/Recorder/RecorderControl.h"

#include <QtCore/QCoreApplication>
#include <fuzzer/FuzzedDataProvider.h>

#include <optional>

namespace {

using KvSyncTest::RecordedCall;
using KvSyncTest::RecorderControl;

const char *const functions[] = {
    "getRunningDevList", "openDevices",  "closeDevices",    "resetDevices",
    "getProperty",       "setProperty",  "resetInterface",  "setFlagBitInterface",
    "project",           "captureImage", "turntableRotate", "execute",
};

QString anyText(FuzzedDataProvider &data)
{
    return QString::fromStdString(data.ConsumeRandomLengthString(40));
}

QVariant anyValue(FuzzedDataProvider &data, int depth = 0)
{
    switch (data.ConsumeIntegralInRange(0, depth < 3 ? 9 : 7)) {
    case 0:
        return data.ConsumeBool();
    case 1:
        return data.ConsumeIntegral<int>();
    case 2:
        return data.ConsumeIntegral<qint64>();
    case 3:
        return data.ConsumeIntegral<quint64>();
    case 4:
        return data.ConsumeFloatingPoint<double>();
    case 5:
        return anyText(data);
    case 6:
        return QByteArray::fromStdString(data.ConsumeRandomLengthString(40));
    case 7:
        return QVariant::fromValue(QVersionNumber(data.ConsumeIntegral<int>()));
    case 8: {
        QVariantList list;
        for (int i = data.ConsumeIntegralInRange(0, 3); i > 0; --i)
            list.append(anyValue(data, depth + 1));
        return list;
    }
    default: {
        QVariantMap map;
        for (int i = data.ConsumeIntegralInRange(0, 3); i > 0; --i)
            map.insert(anyText(data), anyValue(data, depth + 1));
        return map;
    }
    }
}

struct Host
{
    Host()
    {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
        manager.setPluginDirPath(QStringLiteral("../fixtures/Logic"));
        recorder = qobject_cast<RecorderControl *>(
            manager.load(QStringLiteral("Recorder"), QVersionNumber(1, 0)));
        KVSYNC_REQUIRE(recorder);
    }

    int argumentCount = 1;
    char name[6] = "host";
    char *arguments[2] = {name, nullptr};
    QCoreApplication application{argumentCount, arguments};
    KvSyncCore::CommandManager manager;
    RecorderControl *recorder = nullptr;
};

/// What the failure was; nothing after a success.
std::optional<ErrorCode> failureOf(Host &host, const QString &function, const QVariantList &args)
{
    try {
        host.manager.execute(QStringLiteral("Recorder"), function, args, QVersionNumber(1, 0));
        return std::nullopt;
    } catch (const KvSyncTool::Exception &exception) {
        return exception.code();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t size)
{
    static Host host;
    FuzzedDataProvider data(bytes, size);
    const QString function =
        data.ConsumeBool() ? QString::fromLatin1(data.PickValueInArray(functions)) : anyText(data);
    QVariantList args;
    for (int i = data.ConsumeIntegralInRange(0, 6); i > 0; --i)
        args.append(anyValue(data));

    const std::optional<ErrorCode> failure = failureOf(host, function, args);
    const QVector<RecordedCall> calls = host.recorder->takeCalls();
    if (failure) {
        KVSYNC_REQUIRE(*failure == FunctionNotExist || *failure == WrongArgumentCount);
        KVSYNC_REQUIRE(calls.isEmpty());
    } else {
        KVSYNC_REQUIRE(calls.size() == 1);
        KVSYNC_REQUIRE(calls[0].function == function);
        KVSYNC_REQUIRE(calls[0].arguments.size() <= args.size());
    }
    return 0;
}
