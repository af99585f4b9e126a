#include "PluginDeviceHost.h"

using namespace KvSyncTest;

class PluginDeviceSettings : public PluginDeviceHost
{
protected:
    static QVariantMap entryOf(const QVariantList &list, const QString &name)
    {
        for (const QVariant &each : list) {
            if (each.toMap().value("name") == QVariant(name))
                return each.toMap();
        }
        return {};
    }
};

TEST_F(PluginDeviceSettings, ListsWhatTheCapabilitiesOfferWithUnitAndRange)
{
    const QVariant handle = openDevice(WholeScanner);
    set(handle, "luminance", QVariantList{1, 2, 3});
    const QVariantList list = get(handle, "list").toList();
    EXPECT_EQ(entryOf(list, "camera1.maximumSize"),
              (QVariantMap{{"name", "camera1.maximumSize"},
                           {"unit", "px"},
                           {"minimum", 0},
                           {"maximum", 2147483647},
                           {"count", 2},
                           {"readable", true},
                           {"writable", false},
                           {"value", QVariantList{640, 480}}}));
    EXPECT_EQ(entryOf(list, "luminance"), (QVariantMap{{"name", "luminance"},
                                                       {"unit", ""},
                                                       {"minimum", 0},
                                                       {"maximum", 255},
                                                       {"count", 3},
                                                       {"readable", true},
                                                       {"writable", true},
                                                       {"value", QVariantList{1, 2, 3}}}));
    EXPECT_EQ(entryOf(list, "camera2.maximumSize"), QVariantMap());
}

TEST_F(PluginDeviceSettings, ListsThePropertiesThatThePluginNames)
{
    const QVariantList list = get(openDevice(TurntableAlone), "list").toList();
    EXPECT_EQ(entryOf(list, "position"), (QVariantMap{{"name", "position"}}));
    EXPECT_EQ(list.size(), 5); // fail, info, position, slow, vanish
}

TEST_F(PluginDeviceSettings, ReadsTheRangesOfACamera)
{
    const QVariant handle = openDevice(CameraAlone);
    EXPECT_EQ(get(handle, "camera0.exposureRangeUs"), QVariant(QVariantList{20, 1000000}));
    EXPECT_EQ(get(handle, "camera0.gainRange"), QVariant(QVariantList{0, 64}));
    EXPECT_EQ(get(handle, "camera0.pixelFormat"), QVariant(0));
}

TEST_F(PluginDeviceSettings, SetsEachSensorOfACameraByItself)
{
    const QVariant handle = openDevice(WholeScanner);
    set(handle, "camera1.size", QVariantList{320, 200});
    set(handle, "camera1.offset", QVariantList{16, 8});
    set(handle, "camera1.triggerMode", 1);
    EXPECT_EQ(get(handle, "camera1.size"), QVariant(QVariantList{320, 200}));
    EXPECT_EQ(get(handle, "camera1.offset"), QVariant(QVariantList{16, 8}));
    EXPECT_EQ(get(handle, "camera1.triggerMode"), QVariant(1));
    EXPECT_EQ(get(handle, "camera0.size"), QVariant(QVariantList{640, 480}));
    EXPECT_EQ(get(handle, "camera0.offset"), QVariant(QVariantList{0, 0}));
    EXPECT_EQ(get(handle, "camera0.triggerMode"), QVariant(0));
}

TEST_F(PluginDeviceSettings, SetsTheProjector)
{
    const QVariant handle = openDevice(WholeScanner);
    set(handle, "luminance", QVariantList{10, 20, 255});
    set(handle, "projectorLed", true);
    set(handle, "projectorPwm", true);
    EXPECT_EQ(get(handle, "luminance"), QVariant(QVariantList{10, 20, 255}));
    EXPECT_EQ(get(handle, "projectorLed"), QVariant(true));
    EXPECT_EQ(get(handle, "projectorPwm"), QVariant(true));
    set(handle, "projectorLed", false);
    EXPECT_EQ(get(handle, "projectorLed"), QVariant(false));
    EXPECT_EQ(get(handle, "projectorPwm"), QVariant(true));
}

TEST_F(PluginDeviceSettings, APropertyOfThePluginGoesAndComesUnderValue)
{
    const QVariant handle = openDevice(CameraAlone);
    set(handle, "exposure", 5000);
    EXPECT_EQ(get(handle, "exposure").toInt(), 5000);
}

TEST_F(PluginDeviceSettings, APropertyOfThePluginTakesItsKeysFromAMap)
{
    const QVariant handle = openDevice(WholeScanner);
    set(handle, "gain", QVariantMap{{"value", 32}, {"selector", 1}});
    EXPECT_EQ(get(handle, "gain", QVariantMap{{"selector", 1}}).toInt(), 32);
    EXPECT_EQ(get(handle, "gain", QVariantMap{{"selector", 0}}).toInt(), 0);
}

TEST_F(PluginDeviceSettings, APropertyOfSeveralValuesComesAsAMap)
{
    const QVariantMap position = get(openDevice(WholeScanner), "position").toMap();
    EXPECT_EQ(position, (QVariantMap{{"turntable", 0.0}, {"tilt", 0.0}}));
}

TEST_F(PluginDeviceSettings, RefusesValuesBeforeTheDeviceSeesThem)
{
    const QVariant handle = openDevice(WholeScanner);
    set(handle, "luminance", QVariantList{1, 2, 3});
    expectFails(InvalidParameter, "The setting \"luminance\" must be a list of 3 numbers",
                "setProperty", {handle, "luminance", 7});
    expectFails(InvalidParameter,
                "The setting \"luminance\" must be a whole number from 0 to 255, not 256",
                "setProperty", {handle, "luminance", QVariantList{0, 256, 0}});
    EXPECT_EQ(get(handle, "luminance"), QVariant(QVariantList{1, 2, 3}));
}

TEST_F(PluginDeviceSettings, PassesTheCodeOnWithWhichTheDeviceRefuses)
{
    const QVariant handle = openDevice(CameraAlone);
    expectFails(badValue, "The device refuses [641, 480] for \"camera0.size\"", "setProperty",
                {handle, "camera0.size", QVariantList{641, 480}});
    expectFails(badValue, "The device refuses 65 for \"gain\"", "setProperty",
                {handle, "gain", 65});
    expectFails(unknownProperty, "The device does not give the property \"dance\"", "getProperty",
                {handle, "dance", QVariant()});
    expectFails(unknownProperty, "The device refuses 1 for \"dance\"", "setProperty",
                {handle, "dance", 1});
    makeFail(handle, "getMaxImageSize", 0x01F20000);
    expectFails(static_cast<ErrorCode>(0x01F20000),
                "The device does not give the setting \"camera0.maximumSize\"", "getProperty",
                {handle, "camera0.maximumSize", QVariant()});
}

TEST_F(PluginDeviceSettings, WhatCanOnlyBeReadIsNotWritten)
{
    const QVariant handle = openDevice(CameraAlone);
    expectFails(FunctionNotExist, "The setting \"camera0.gainRange\" can be read, but not written",
                "setProperty", {handle, "camera0.gainRange", QVariantList{0, 1}});
}

TEST_F(PluginDeviceSettings, NamesTheCapabilityThatADeviceLacks)
{
    const QVariant handle = openDevice(TurntableAlone);
    expectFails(FunctionNotExist, "The device \"Virtual turntable\" has no camera", "getProperty",
                {handle, "camera0.size", QVariant()});
    expectFails(FunctionNotExist, "The device \"Virtual turntable\" has no projector",
                "setProperty", {handle, "luminance", QVariantList{0, 0, 0}});
}
