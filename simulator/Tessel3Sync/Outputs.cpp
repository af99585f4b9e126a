#include "Outputs.h"

#include "Texts.h"

#include <algorithm>
#include <cstring>

namespace Tessel3SyncSimulator {

void assign(bool &target, const Value &value)
{
    target = std::get<bool>(value);
}

void assign(int &target, const Value &value)
{
    target = std::get<int>(value);
}

void assign(double &target, const Value &value)
{
    target = std::get<double>(value);
}

void assign(std::string &target, const Value &value)
{
    target = std::get<std::string>(value);
}

void assign(char *&target, const Value &value)
{
    const auto *text = std::get_if<std::string>(&value);
    target = text ? lastingText(*text) : nullptr;
}

void assign(void *&target, const Value &)
{
    target = nullptr;
}

void assign(std::vector<bool> &target, const Value &value)
{
    target = std::get<std::vector<bool>>(value);
}

void assign(std::vector<int> &target, const Value &value)
{
    target = std::get<std::vector<int>>(value);
}

void assign(std::vector<char *> &target, const Value &value)
{
    target.clear();
    for (const auto &text : std::get<Texts>(value))
        target.push_back(text ? lastingText(*text) : nullptr);
}

void assign(ImageOutput &target, const Value &value)
{
    const auto &texts = std::get<Texts>(value);
    target.pointers.clear();
    target.storage.images.clear();
    target.storage.images.reserve(texts.size());
    for (const auto &bytes : texts) {
        if (!bytes) {
            target.pointers.push_back(nullptr);
            continue;
        }
        auto &image = target.storage.images.emplace_back(bytes->begin(), bytes->end());
        image.push_back(0); // an image of no bytes has an address too
        target.pointers.push_back(image.data());
    }
}

void assign(BufferOutput &target, const Value &value)
{
    const auto *text = std::get_if<std::string>(&value);
    if (!text) {
        // Who replaces the caller's buffer owns it from then on.
        delete[] target.buffer;
        target.buffer = nullptr;
    } else if (target.buffer) {
        writeToBuffer(target.buffer, *text);
    }
}

void assign(ReplacementOutput &target, const Value &value)
{
    // Made before the original goes, so that its address is another.
    auto *replacement = new char[UserInformationLength + 1]();
    writeToBuffer(replacement, std::get<std::string>(value));
    delete[] target.buffer;
    target.buffer = replacement;
}

void writeToBuffer(char *buffer, const std::string &text)
{
    const std::size_t size = std::min<std::size_t>(text.size(), UserInformationLength);
    std::memcpy(buffer, text.data(), size);
    buffer[size] = '\0';
}

} // namespace Tessel3SyncSimulator
