#include "api/Platform.h"

#ifdef _WIN32
#include <windows.h>

#include <string>
#else
#include <cstdlib>
#endif

namespace Tessel3SyncSimulator {

#ifdef _WIN32

void stayLoaded()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&stayLoaded), &module);
}

std::optional<std::filesystem::path> pathFromEnvironment(const char *variable)
{
    const std::wstring name(variable, variable + std::char_traits<char>::length(variable));
    std::wstring value(GetEnvironmentVariableW(name.c_str(), nullptr, 0), L'\0');
    value.resize(
        GetEnvironmentVariableW(name.c_str(), value.data(), static_cast<DWORD>(value.size())));
    return value.empty() ? std::nullopt : std::make_optional<std::filesystem::path>(value);
}

#else

void stayLoaded()
{
    // The library is linked with -z nodelete.
}

std::optional<std::filesystem::path> pathFromEnvironment(const char *variable)
{
    const char *value = std::getenv(variable);
    return value && *value ? std::make_optional<std::filesystem::path>(value) : std::nullopt;
}

#endif

std::optional<std::string> textFromEnvironment(const char *variable)
{
    const auto held = pathFromEnvironment(variable);
    return held ? std::make_optional(held->u8string()) : std::nullopt;
}

} // namespace Tessel3SyncSimulator
