#include "KvSyncCore/CommandInterface.h"
#include "KvSyncCore/SyncCore.h"
#include "SyncCorePrivate.h"
#include "support/RowName.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaObject>
#include <QtCore/QTranslator>
#include <gtest/gtest.h>

namespace {

using KvSyncCore::SyncCore;
using KvSyncCore::SyncCorePrivate;

struct ClassRow
{
    const char *name;
    const QMetaObject *meta;
    const char *className;
};

/// The three classes that carry the signal.
class SignalClass : public ::testing::TestWithParam<ClassRow>
{
protected:
    const QMetaObject &meta = *GetParam().meta;
    const QMetaMethod signal = meta.method(meta.methodOffset());
};

TEST_P(SignalClass, BearsItsFullNameDirectlyUnderQObject)
{
    EXPECT_STREQ(meta.className(), GetParam().className);
    EXPECT_EQ(meta.superClass(), &QObject::staticMetaObject);
}

TEST_P(SignalClass, HasOneMethodOfItsOwnAndItIsTheSignal)
{
    EXPECT_EQ(meta.methodCount() - meta.methodOffset(), 1);
    EXPECT_EQ(signal.methodType(), QMetaMethod::Signal);
    EXPECT_EQ(signal.methodSignature(),
              "sendSignals(bool,QString,QString,QVariantList,QVersionNumber)");
    EXPECT_EQ(signal.returnType(), static_cast<int>(QMetaType::Void));
}

TEST_P(SignalClass, HasNoPropertiesEnumeratorsConstructorsOrClassInfo)
{
    EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
    EXPECT_EQ(meta.enumeratorCount(), meta.enumeratorOffset());
    EXPECT_EQ(meta.classInfoCount(), meta.classInfoOffset());
    EXPECT_EQ(meta.constructorCount(), 0);
}

TEST_P(SignalClass, NamesTheParametersAsToolsKnowThem)
{
    const QList<QByteArray> names{"isPub", "pluginName", "signalName", "list", "verion"};
    EXPECT_EQ(signal.parameterNames(), names);
}

TEST_P(SignalClass, AnswersWithAnIdForTheVersionAlone)
{
    for (int argument = 0; argument < 5; ++argument) {
        int id = -2;
        int asked = argument;
        void *answer[] = {&id, &asked};
        meta.static_metacall(QMetaObject::RegisterMethodArgumentMetaType, 0, answer);
        EXPECT_EQ(id, argument == 4 ? qMetaTypeId<QVersionNumber>() : -1) << argument;
    }
}

TEST_P(SignalClass, IsFoundByEitherSpellingOfTheSignature)
{
    for (const char *spelling :
         {"sendSignals(bool, QString, QString, QVariantList,QVersionNumber)",
          "sendSignals(bool, QString, QString, QVariantList, QVersionNumber)"}) {
        EXPECT_EQ(meta.indexOfSignal(QMetaObject::normalizedSignature(spelling)),
                  meta.methodOffset());
    }
}

const ClassRow classes[] = {
    {"SyncCore", &SyncCore::staticMetaObject, "KvSyncCore::SyncCore"},
    {"SyncCorePrivate", &SyncCorePrivate::staticMetaObject, "KvSyncCore::SyncCorePrivate"},
    {"CommandInterface", &CommandInterface::staticMetaObject, "CommandInterface"},
};
INSTANTIATE_TEST_SUITE_P(MetaObject, SignalClass, ::testing::ValuesIn(classes),
                         KvSyncTest::rowName);

TEST(InterfaceIdentifier, IsTheOneThatPluginsAreBuiltAgainst)
{
    EXPECT_STREQ(CommandInterface_iid, "Veltrano.CommandInterface_v1.0.0.20200424");
    EXPECT_STREQ(qobject_interface_iid<CommandInterface *>(), CommandInterface_iid);
}

/// Answers with what it was asked.
class EchoTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *sourceText, const char *disambiguation,
                      int n) const override
    {
        return QString("%1|%2|%3|%4").arg(context, sourceText, disambiguation).arg(n);
    }
    bool isEmpty() const override { return false; }
};

QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED

TEST(Translation, AsksForTheTextInTheClassesContext)
{
    EchoTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const QString expected = "KvSyncCore::SyncCore|hello|greeting|3";
    EXPECT_EQ(SyncCore::tr("hello", "greeting", 3), expected);
    EXPECT_EQ(SyncCore::trUtf8("hello", "greeting", 3), expected);
    QCoreApplication::removeTranslator(&translator);
}

TEST(Translation, WithoutATranslatorReturnsTheTextWithItsNumber)
{
    EXPECT_EQ(SyncCore::tr("%n frames", nullptr, 3), "3 frames");
    EXPECT_EQ(SyncCore::trUtf8("%n frames", nullptr, 3), "3 frames");
    EXPECT_EQ(SyncCore::tr("plain"), "plain");
    EXPECT_EQ(SyncCore::trUtf8("plain"), "plain");
}

QT_WARNING_POP

} // namespace
