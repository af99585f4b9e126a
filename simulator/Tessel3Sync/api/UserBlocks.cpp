#include "api/UserBlocks.h"

#include "script/Files.h"
#include "script/StrictJson.h"

#include <charconv>

namespace Tessel3SyncSimulator {

namespace {

using Json = nlohmann::json;
using Blocks = std::map<int, std::string>;

constexpr const char *format = "KV-SIM user information 1";

/// Bytes as pairs of hexadecimal digits: a block may hold any.
std::string toHex(const std::string &bytes)
{
    constexpr const char *digits = "0123456789abcdef";
    std::string hex;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        hex += {digits[value / 16], digits[value % 16]};
    }
    return hex;
}

std::string fromHex(const std::string &hex)
{
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        unsigned value = 0;
        const char *end = hex.data() + std::min(i + 2, hex.size());
        const auto parsed = std::from_chars(hex.data() + i, end, value, 16);
        if (parsed.ptr != hex.data() + i + 2)
            fail("not pairs of hexadecimal digits");
        bytes += static_cast<char>(value);
    }
    return bytes;
}

/// Throws if the content says anything but what toJson does: it would be lost with the next write.
Blocks fromJson(const std::string &content)
{
    const Json json = parsedJson(content);
    JsonObject members(json);
    if (members.text("format") != format)
        fail("another format");
    Blocks blocks;
    for (const Json &entry : members.list("blocks")) {
        JsonObject block(entry);
        const int address = block.integer("address", 0);
        const std::string bytes = fromHex(block.text("hex"));
        block.refuseOthers();
        if (address >= UserInformationBlocks || bytes.size() > UserInformationLength)
            fail("no such block");
        if (!blocks.emplace(address, bytes).second)
            fail("one block twice");
    }
    members.refuseOthers();
    return blocks;
}

std::string toJson(const Blocks &blocks)
{
    Json list = Json::array();
    for (const auto &[address, bytes] : blocks)
        list.push_back({{"address", address}, {"hex", toHex(bytes)}});
    return Json{{"format", format}, {"blocks", list}}.dump(2) + "\n";
}

} // namespace

UserBlocks::UserBlocks(const std::filesystem::path &path)
    : file(path)
{
    std::error_code error;
    if (!std::filesystem::exists(path, error) && !error)
        return;
    try {
        blocks = fromJson(fileContent(path).value());
    } catch (const std::exception &) {
        usable = false;
    }
}

RETSTATUS UserBlocks::write(int address, const std::string &text)
{
    if (!usable)
        return refusal(StorageFailed);
    Blocks changed = blocks;
    changed[address] = text;
    if (file && !replaceFile(*file, toJson(changed)))
        return refusal(StorageFailed);
    blocks = changed;
    return Success;
}

RETSTATUS UserBlocks::read(int address, std::string &text) const
{
    if (!usable)
        return refusal(StorageFailed);
    const auto found = blocks.find(address);
    text = found == blocks.end() ? std::string() : found->second;
    return Success;
}

} // namespace Tessel3SyncSimulator
