// How arguments of any type arrive at a plug-in.

#include "integration/HostFixture.h"

#include <QtCore/QDate>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

namespace {

using namespace KvSyncTest;

/// A function, the place of one of its arguments, and what arrives there for what is given.
struct ConversionRow
{
    const char *name;
    QVariant given;
    QVariant arriving;
};

class Conversion : public HostFixture, public ::testing::WithParamInterface<ConversionRow>
{
protected:
    /// Calls the function with the row's value as its last argument, behind these.
    void expectArrives(const char *function, QVariantList arguments)
    {
        const int place = arguments.size();
        RecorderControl &demo = loadDemo();
        execute(function, arguments << GetParam().given);
        const QVariant arrived = demo.takeCalls().value(0).arguments.value(place);
        EXPECT_EQ(arrived.userType(), GetParam().arriving.userType());
        EXPECT_EQ(arrived, GetParam().arriving) << arrived.toString().toStdString();
    }
};

class TextConversion : public Conversion
{
};

TEST_P(TextConversion, IsThatOfTheVariant)
{
    expectArrives("project", {1});
}

const ConversionRow texts[] = {
    {"Number", -42, "-42"},
    {"WideNumber", Q_INT64_C(0x123456789ABCDEF0), "1311768467463790320"},
    {"Fraction", -1.5, "-1.5"},
    {"Flag", true, "true"},
    {"Letter", QChar(0x6f22), QStringLiteral("\u6f22")},
    {"BytesInUtf8", QByteArray("\xc3\xa9"), QStringLiteral("\u00e9")},
    {"Date", QDate(2020, 4, 24), "2020-04-24"},
    {"OneText", QStringList{"a"}, "a"},
    {"SeveralTexts", QStringList{"a", "b"}, ""},
    {"List", QVariantList{"a"}, ""},
    {"Map", QVariantMap{{"a", "b"}}, ""},
    {"ForeignType", QVariant::fromValue(QVersionNumber{1, 2}), ""},
};
INSTANTIATE_TEST_SUITE_P(Dispatch, TextConversion, ::testing::ValuesIn(texts), rowName);

class MapConversion : public Conversion
{
};

TEST_P(MapConversion, IsThatOfTheVariant)
{
    expectArrives("openDevices", {});
}

const ConversionRow maps[] = {
    {"Hash", QVariantHash{{"a", 1}}, QVariantMap{{"a", 1}}},
    {"JsonObject", QVariant(QJsonObject{{"a", "b"}}), QVariantMap{{"a", "b"}}},
    {"List", QVariantList{1}, QVariantMap()},
    {"Text", "a", QVariantMap()},
    {"Number", 1, QVariantMap()},
    {"MapOfAnotherType", QVariant::fromValue(QMap<QString, int>{{"a", 1}}), QVariantMap()},
};
INSTANTIATE_TEST_SUITE_P(Dispatch, MapConversion, ::testing::ValuesIn(maps), rowName);

class ListConversion : public Conversion
{
};

TEST_P(ListConversion, IsThatOfTheVariant)
{
    expectArrives("execute", {1, "command"});
}

const ConversionRow lists[] = {
    {"Texts", QStringList{"a", "b"}, QVariantList{"a", "b"}},
    {"JsonArray", QVariant(QJsonArray{"a"}), QVariantList{"a"}},
    {"Map", QVariantMap{{"a", 1}}, QVariantList()},
    {"Text", "a", QVariantList()},
    {"Number", 1, QVariantList()},
    {"ListOfAnotherType", QVariant::fromValue(QVector<int>{1}), QVariantList()},
};
INSTANTIATE_TEST_SUITE_P(Dispatch, ListConversion, ::testing::ValuesIn(lists), rowName);

class FlagConversion : public Conversion
{
};

TEST_P(FlagConversion, IsThatOfTheVariant)
{
    expectArrives("turntableRotate", {1, "left", QVariantMap()});
}

const ConversionRow flags[] = {
    {"Zero", 0, false},
    {"Two", 2, true},
    {"MinusOne", -1, true},
    {"FractionOfZero", 0.0, false},
    {"FractionBelowOneHalf", 0.4, false},
    {"FractionAboveOneHalf", 0.6, true},
    {"TextZero", "0", false},
    {"TextOne", "1", true},
    {"TextFalseInCapitals", "FALSE", false},
    {"TextOfBlanks", " ", true},
    {"EmptyText", "", false},
    {"TextNo", "no", true},
    {"BytesFalse", QByteArray("false"), false},
    {"Bytes", QByteArray("x"), true},
    {"List", QVariantList{true}, false},
    {"Map", QVariantMap{{"a", true}}, false},
};
INSTANTIATE_TEST_SUITE_P(Dispatch, FlagConversion, ::testing::ValuesIn(flags), rowName);

} // namespace
