#include "StandardOutput.h"

#include <cstdio>
#include <cstdlib>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace KvSyncTest {

namespace {

#if defined(_WIN32)
int duplicate(int descriptor)
{
    return _dup(descriptor);
}

bool replace(int descriptor, int target)
{
    return _dup2(descriptor, target) >= 0;
}

int descriptorOf(std::FILE *file)
{
    return _fileno(file);
}

void closeDescriptor(int descriptor)
{
    _close(descriptor);
}
#else
int duplicate(int descriptor)
{
    return dup(descriptor);
}

bool replace(int descriptor, int target)
{
    return dup2(descriptor, target) >= 0;
}

int descriptorOf(std::FILE *file)
{
    return fileno(file);
}

void closeDescriptor(int descriptor)
{
    close(descriptor);
}
#endif

void check(bool ok, const char *what)
{
    if (ok)
        return;
    std::perror(what);
    std::abort();
}

} // namespace

StandardOutput::StandardOutput()
    : written(folder.filePath("stdout"))
{
    std::fflush(stdout);
    savedDescriptor = duplicate(descriptorOf(stdout));
    check(savedDescriptor >= 0, "dup");
    // Text mode, as standard output has it from the start.
    std::FILE *file = std::fopen(written.fileName().toLocal8Bit().constData(), "w");
    check(file != nullptr, "fopen");
    check(replace(descriptorOf(file), descriptorOf(stdout)), "dup2");
    std::fclose(file);
    check(written.open(QIODevice::ReadOnly), "open");
}

StandardOutput::~StandardOutput()
{
    std::fflush(stdout);
    check(replace(savedDescriptor, descriptorOf(stdout)), "dup2");
    closeDescriptor(savedDescriptor);
}

std::string StandardOutput::takeNew()
{
    std::fflush(stdout);
    return written.readAll().toStdString();
}

} // namespace KvSyncTest
