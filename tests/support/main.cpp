#include <QtCore/QCoreApplication>
#include <gmock/gmock.h>

int main(int argc, char *argv[])
{
    // With a time zone named, the C library reads it once. Otherwise it reads it again for each
    // line of the log, under a lock of its own that the thread sanitizer does not see.
    if (!qEnvironmentVariableIsSet("TZ"))
        qputenv("TZ", "UTC0");
    // Plug-in directories are looked up below the application's folder, which only a
    // QCoreApplication knows.
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
