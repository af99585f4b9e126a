#include "commands/CommandLine.h"

#include <QtCore/QCoreApplication>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    // Qt's arguments, not main's: on Windows only they keep every character.
    return KvSyncCli::runCommandLine(QCoreApplication::arguments());
}
