#include "ScannerHost.h"

using namespace KvSyncTest;
namespace Simulator = Tessel3SyncSimulator;

class ScannerSettings : public ScannerHost
{
protected:
    ScannerSettings() { open(); }

    QVariant get(const QString &name)
    {
        return call("getProperty", {scannerHandle, name, QVariant()});
    }

    void set(const QString &name, const QVariant &value)
    {
        call("setProperty", {scannerHandle, name, value});
    }

    void reset(const QString &name) { call("resetInterface", {scannerHandle, name}); }
};

namespace {

/// One setting: how it is written, and by which library calls.
struct Row
{
    QString name;
    QVariant value;
    std::string writtenBy; ///< the whole library call
    std::string readBy;    ///< the library function; empty if it cannot be read
    QString unit;
    QVariant minimum;
    QVariant maximum;
};

const Row rows[] = {
    {"camera1.exposureUs", 1500.5, "SetCameraExposure(device, 1, 1500.5)", "GetCameraExposure",
     "us", 1.0, 1000000.0},
    {"camera1.gain", 65535, "SetCameraExposureAndGain(device, 1, 1500.5, 65535)",
     "GetCameraExposureAndGain", QString(), 0, 65535},
    {"periodMs", 7, "SetVideoTriggerPeriod(device, 7)", "GetVideoTriggerPeriod", "ms", 1, 60000},
    {"projectorBrightness", 11, "SetProjectorBrightness(device, 11)", "GetProjectorBrightness", "%",
     0, 100},
    {"projectorDutyRatio", 12, "SetProjectDutioRatio(device, 12)", "GetProjectDutioRatio", "%", 0,
     100},
    {"strobeDutyRatios", QVariantList{1, 2, 3}, "SetStrobeDutioRatio(device, 1, 2, 3)",
     "GetStrobeDutioRatio", "%", 0, 100},
    {"laserLineDutyRatio", 13, "SetLaserLineDutioRatio(device, 13)", "GetLaserLineDutioRatio", "%",
     0, 100},
    {"infraredDutyRatio", 14, "SetIRLaserDutioRatio(device, 14)", "GetIRLaserDutioRatio", "%", 0,
     100},
    {"distanceIndication", 2, "SetDistanceIndicate(device, 2)", "", QString(), 0, 3},
};

std::string functionOf(const std::string &call)
{
    return call.substr(0, call.find('('));
}

} // namespace

TEST_F(ScannerSettings, EveryOneReachesTheScannerAndIsReadBack)
{
    for (const Row &row : rows) {
        Simulator::clearCalls();
        set(row.name, row.value);
        EXPECT_EQ(libraryCalls(functionOf(row.writtenBy)), std::vector<std::string>{row.writtenBy});
        if (row.readBy.empty())
            continue;
        EXPECT_EQ(get(row.name), row.value) << row.name.toStdString();
    }
}

TEST_F(ScannerSettings, EveryOneIsListedWithUnitRangeAndValue)
{
    const QVariantList list = get("list").toList();
    EXPECT_EQ(list.size(), 3 + 3 + 7); // two for each of three cameras
    for (const Row &row : rows) {
        QVariantMap found;
        for (const QVariant &entry : list) {
            if (entry.toMap().value("name") == row.name)
                found = entry.toMap();
        }
        EXPECT_EQ(found.value("unit"), QVariant(row.unit));
        EXPECT_EQ(found.value("minimum"), row.minimum) << row.name.toStdString();
        EXPECT_EQ(found.value("maximum"), row.maximum) << row.name.toStdString();
        EXPECT_EQ(found.value("readable"), QVariant(!row.readBy.empty()));
        EXPECT_EQ(found.value("count"), QVariant(row.value.type() == QVariant::List ? 3 : 1));
        EXPECT_EQ(found.contains("value"), !row.readBy.empty());
    }
}

TEST_F(ScannerSettings, EveryRefusalOfTheScannerIsTold)
{
    for (const Row &row : rows) {
        const std::string function = functionOf(row.writtenBy);
        Simulator::script(function, Simulator::callCount(function) + 1, {3, {}});
        const QString shown =
            row.value.type() == QVariant::List ? QStringLiteral("[1, 2, 3]") : row.value.toString();
        const bool byCommand =
            function == "SetLaserLineDutioRatio" || function == "SetIRLaserDutioRatio";
        expectThrows(
            byCommand ? CommandFailed : DeviceOperationFailed,
            QStringLiteral("The scanner refuses %1 for the setting \"%2\"").arg(shown, row.name),
            [&] { set(row.name, row.value); });
        if (row.readBy.empty())
            continue;
        Simulator::script(row.readBy, Simulator::callCount(row.readBy) + 1, {3, {}});
        expectThrows(DeviceOperationFailed,
                     QStringLiteral("The scanner does not give the setting \"%1\"").arg(row.name),
                     [&] { get(row.name); });
    }
}

TEST_F(ScannerSettings, ValuesOutOfRangeDoNotReachTheScanner)
{
    Simulator::clearCalls();
    const QString whole = "The setting \"camera0.gain\" must be a whole number from "
                          "0 to 65535, not %1";
    const std::pair<QVariant, QString> gains[] = {
        {-1, "-1"}, {65536, "65536"}, {1.5, "1.5"}, {"loud", "\"loud\""}, {QVariant(), "nothing"},
    };
    for (const auto &[value, shown] : gains)
        expectThrows(InvalidParameter, whole.arg(shown),
                     [&, gain = value] { set("camera0.gain", gain); });
    expectThrows(InvalidParameter,
                 "The setting \"camera0.exposureUs\" must be a number from 1 to "
                 "1000000, not 0.5",
                 [&] { set("camera0.exposureUs", 0.5); });
    expectThrows(InvalidParameter, "The setting \"strobeDutyRatios\" must be a list of 3 numbers",
                 [&] { set("strobeDutyRatios", 5); });
    expectThrows(InvalidParameter,
                 "The setting \"strobeDutyRatios\" must be a whole number from 0 to "
                 "100, not 101",
                 [&] {
                     set("strobeDutyRatios", QVariantList{1, 101, 3});
                 });
    EXPECT_TRUE(Simulator::calls().empty());
}

TEST_F(ScannerSettings, UnknownNamesAreTold)
{
    for (const QString &name :
         {QStringLiteral("gain"), QStringLiteral("camera0.periodMs"), QStringLiteral("PeriodMs"),
          QStringLiteral("cameraX.gain"), QStringLiteral("camera-1.gain"),
          QStringLiteral("camera100.gain"), QString()}) {
        const QString text = QStringLiteral("There is no setting \"%1\"").arg(name);
        expectThrows(FunctionNotExist, text, [&] { get(name); });
        expectThrows(FunctionNotExist, text, [&] { set(name, 1); });
        expectThrows(FunctionNotExist, text, [&] { reset(name); });
    }
}

TEST_F(ScannerSettings, ACameraThatIsNotThereIsRefusedByTheScanner)
{
    expectThrows(DeviceOperationFailed, "The scanner does not give the setting \"camera3.gain\"",
                 [&] { get("camera3.gain"); });
}

TEST_F(ScannerSettings, WhatCannotBeReadSaysSo)
{
    expectThrows(FunctionNotExist,
                 "The setting \"distanceIndication\" can be written, but not read",
                 [&] { get("distanceIndication"); });
}

TEST_F(ScannerSettings, AGainIsWrittenWithTheExposureThatStands)
{
    set("camera0.exposureUs", 1234.0);
    set("camera0.gain", 9);
    EXPECT_EQ(get("camera0.exposureUs"), QVariant(1234.0));
    EXPECT_EQ(get("camera0.gain"), QVariant(9));
}

TEST_F(ScannerSettings, AResetRestoresWhatWasThereBeforeTheFirstChange)
{
    const QString name = "projectorBrightness";
    const QVariant before = get(name);
    set(name, 1);
    set(name, 2);
    reset(name);
    EXPECT_EQ(get(name), before);
}

TEST_F(ScannerSettings, AResetOfAllRestoresEveryOne)
{
    const QVariant before = get("list");
    for (const Row &row : rows)
        set(row.name, row.value);
    ASSERT_NE(get("list"), before);
    reset("settings");
    EXPECT_EQ(get("list"), before);
}

TEST_F(ScannerSettings, AResetOfWhatWasNeverChangedDoesNothing)
{
    Simulator::clearCalls();
    reset("periodMs");
    EXPECT_TRUE(Simulator::calls().empty());
}

TEST_F(ScannerSettings, ANewlyOpenedScannerHasNothingToRestore)
{
    set("periodMs", 9);
    call("closeDevices", {scannerHandle});
    open();
    Simulator::clearCalls();
    reset("settings");
    EXPECT_TRUE(Simulator::calls().empty());
}
