// kvsync's search against the loader itself, over real libraries.

#include "support/RowName.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <gtest/gtest.h>

namespace {

struct OrderRow
{
    const char *name;
    const char *library;
    bool environment; ///< whether LD_LIBRARY_PATH names a folder that has the library, too
    const char *place;
};

void PrintTo(const OrderRow &row, std::ostream *stream)
{
    *stream << row.name;
}

class LoaderOrder : public ::testing::TestWithParam<OrderRow>
{
};

} // namespace

TEST_P(LoaderOrder, SearchFindsWhatTheLoaderTakes)
{
    const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/loader/");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("LD_LIBRARY_PATH"));
    if (GetParam().environment)
        environment.insert(QStringLiteral("LD_LIBRARY_PATH"),
                           folder + QStringLiteral("environment"));
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.start(folder + QStringLiteral("LoaderProbe"),
                {folder + QStringLiteral("lib%1.so").arg(QLatin1String(GetParam().library))});
    ASSERT_TRUE(probe.waitForFinished(120000)) << probe.errorString().toStdString();
    EXPECT_EQ(probe.readAllStandardOutput().toStdString(),
              std::string(GetParam().place) + ' ' + GetParam().place + '\n')
        << probe.readAllStandardError().toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Orders, LoaderOrder,
    ::testing::Values(OrderRow{"RpathBeforeTheEnvironment", "WithRpath", true, "rpath"},
                      OrderRow{"EnvironmentBeforeRunpath", "WithRunpath", true, "environment"},
                      OrderRow{"RunpathAtLast", "WithRunpath", false, "runpath"},
                      OrderRow{"NoRpathFromAboveBesideARunpath", "OverRunpath", false, "runpath"},
                      OrderRow{"EnvironmentBesideARunpath", "OverRunpath", true, "environment"},
                      OrderRow{"RpathFromFarAbovePastARunpath", "FarAbove", true, "rpath"},
                      OrderRow{"RpathOfTheProgram", "Bare", true, "program"}),
    KvSyncTest::rowName);
