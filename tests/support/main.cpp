#include <QtCore/QCoreApplication>
#include <gmock/gmock.h>

int main(int argc, char *argv[])
{
    // Plug-in directories are looked up below the application's folder, which only a
    // QCoreApplication knows.
    QCoreApplication application(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
