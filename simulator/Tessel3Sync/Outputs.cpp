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

void corrupt(bool &target)
{
    target = !target;
}

void corrupt(int &target)
{
    target = ~target;
}

void corrupt(double &target)
{
    target = -target - 1.0;
}

void corrupt(std::string &target)
{
    for (char &byte : target)
        byte = static_cast<char>(~byte);
}

void corrupt(char *&target)
{
    if (!target)
        return;
    std::string text = target;
    corrupt(text);
    target = lastingText(text);
}

void corrupt(void *&target)
{
    target = nullptr;
}

void corrupt(std::vector<bool> &target)
{
    target.flip();
}

void corrupt(std::vector<int> &target)
{
    for (int &value : target)
        corrupt(value);
}

void corrupt(std::vector<char *> &target)
{
    for (char *&text : target)
        corrupt(text);
}

void corrupt(ImageOutput &target)
{
    for (auto &image : target.storage.images)
        corrupt(image.data(), image.size());
}

void corrupt(BufferOutput &target)
{
    // To its last byte, the terminating zero too: only a reader that keeps count survives it.
    if (target.buffer)
        corrupt(reinterpret_cast<unsigned char *>(target.buffer), UserInformationLength + 1);
}

void corrupt(ReplacementOutput &)
{
    // The same buffer as the one above.
}

void corrupt(unsigned char *pixels, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i)
        pixels[i] = static_cast<unsigned char>(~pixels[i]);
}

void writeToBuffer(char *buffer, const std::string &text)
{
    const std::size_t size = std::min<std::size_t>(text.size(), UserInformationLength);
    std::memcpy(buffer, text.data(), size);
    buffer[size] = '\0';
}

} // namespace Tessel3SyncSimulator
