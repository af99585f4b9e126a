#include "LibrarySearch.h"

#include <QtCore/QDir>

#include <windows.h>

#include <string>

namespace KvSyncCli {

namespace {

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

// Names that the system maps to libraries of its own; no files are called so.
bool isApiSet(const QString &name)
{
    return name.startsWith(QLatin1String("api-ms-"), Qt::CaseInsensitive) ||
           name.startsWith(QLatin1String("ext-ms-"), Qt::CaseInsensitive);
}

QString modulePath(HMODULE module)
{
    std::wstring buffer(32768, L'\0');
    const DWORD length = GetModuleFileNameW(module, &buffer[0], static_cast<DWORD>(buffer.size()));
    return QDir::fromNativeSeparators(
        QString::fromWCharArray(buffer.data(), static_cast<int>(length)));
}

} // namespace

// The plug-in's own folder is not looked through: Windows does not either.
QString findLibrary(const QString &name, const SearchFolders &)
{
    if (const HMODULE module = GetModuleHandleW(wide(name)))
        return modulePath(module);
    if (isApiSet(name))
        return name;
    std::wstring buffer(32768, L'\0');
    const DWORD length = SearchPathW(nullptr, wide(name), L".dll",
                                     static_cast<DWORD>(buffer.size()), &buffer[0], nullptr);
    if (length == 0 || length >= buffer.size())
        return {};
    return QDir::fromNativeSeparators(
        QString::fromWCharArray(buffer.data(), static_cast<int>(length)));
}

QStringList foldersOfThisProcess()
{
    return {};
}

bool isLoadedLibrary(const QString &name)
{
    return isApiSet(name) || GetModuleHandleW(wide(name)) != nullptr;
}

} // namespace KvSyncCli
