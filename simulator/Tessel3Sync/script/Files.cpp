#include "script/Files.h"

#include <fstream>
#include <iterator>

namespace Tessel3SyncSimulator {

std::optional<std::string> fileContent(const std::filesystem::path &file)
{
    // A folder opens on some systems, and then reads as empty.
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    return stream.is_open() && !stream.bad() ? std::make_optional(content) : std::nullopt;
}

bool replaceFile(const std::filesystem::path &file, const std::string &content)
{
    std::filesystem::path fresh = file;
    fresh += ".new";
    std::error_code error;
    std::ofstream stream(fresh, std::ios::binary | std::ios::trunc);
    stream << content;
    stream.close();
    if (stream)
        std::filesystem::rename(fresh, file, error);
    if (!stream || error) {
        std::error_code ignored;
        std::filesystem::remove(fresh, ignored);
        return false;
    }
    return true;
}

} // namespace Tessel3SyncSimulator
