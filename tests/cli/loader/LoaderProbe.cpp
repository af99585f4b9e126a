// LoaderProbe LIBRARY: prints the folder in which kvsync's search finds the library's Answer, and
// the one from which the loader takes it.

#include "LibrarySearch.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>

#include <iostream>

namespace {

using Place = const char *(*)();

std::string searched(const QString &path)
{
    for (const KvSyncCli::NeededLibrary &needed :
         KvSyncCli::findNeededLibraries(path, KvSyncCli::libraryFileAt(path)))
        if (needed.name == QLatin1String("libAnswer.so") && !needed.isMissing())
            return QFileInfo(needed.path).dir().dirName().toStdString();
    return "nowhere";
}

std::string taken(const QString &path)
{
    QLibrary library(path);
    const auto place = reinterpret_cast<Place>(library.resolve("kvSyncTestAnswer"));
    return place ? place() : "nowhere";
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QString path = QCoreApplication::arguments().value(1);
    std::cout << searched(path);
    std::cout << ' ' << taken(path) << '\n';
    return 0;
}
