#include "TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <random>

namespace {

void setVariable(const std::string &name, const std::string &value)
{
#ifdef _WIN32
    const auto wide = [](const std::string &text) {
        return std::filesystem::u8path(text).wstring();
    };
    _wputenv_s(wide(name).c_str(), wide(value).c_str()); // an empty value removes it
#else
    if (value.empty())
        unsetenv(name.c_str());
    else
        setenv(name.c_str(), value.c_str(), 1);
#endif
}

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::random_device random;
    path = std::filesystem::temp_directory_path() /
           std::filesystem::u8path("kvsync-\u00e9-" + std::to_string(random()));
    std::filesystem::create_directory(path);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
}

std::string TemporaryFolder::file(const std::string &name) const
{
    return (path / name).u8string();
}

std::string TemporaryFolder::write(const std::string &name, const std::string &content) const
{
    std::ofstream(path / name, std::ios::binary) << content;
    return file(name);
}

std::vector<std::string> TemporaryFolder::entries() const
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(path))
        names.push_back(entry.path().filename().u8string());
    return names;
}

EnvironmentVariable::EnvironmentVariable(const char *variable, const std::string &value)
    : name(variable)
{
    setVariable(name, value);
}

EnvironmentVariable::~EnvironmentVariable()
{
    setVariable(name, "");
}
