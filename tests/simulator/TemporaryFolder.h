#ifndef KVSYNC_TESTS_SIMULATOR_TEMPORARYFOLDER_H
#define KVSYNC_TESTS_SIMULATOR_TEMPORARYFOLDER_H

#include <filesystem>
#include <string>
#include <vector>

/// An empty folder of its own, with a letter outside ASCII in its name; removed at the end.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    /// A path in the folder, as UTF-8.
    std::string file(const std::string &name) const;
    /// Writes a file and returns its path, as UTF-8.
    std::string write(const std::string &name, const std::string &content) const;
    std::vector<std::string> entries() const;

private:
    std::filesystem::path path;
};

/// An environment variable of this process while it lives; the value is UTF-8.
class EnvironmentVariable
{
public:
    EnvironmentVariable(const char *name, const std::string &value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable &) = delete;
    EnvironmentVariable &operator=(const EnvironmentVariable &) = delete;

private:
    const std::string name;
};

#endif
