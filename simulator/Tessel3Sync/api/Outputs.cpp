#include "api/Outputs.h"

#include "scanner/Delivery.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <set>

namespace Tessel3SyncSimulator {

char *lastingText(const std::string &text)
{
    // Never destroyed: a host may read the texts while the process ends.
    static auto &mutex = *new std::mutex;
    static auto &texts = *new std::set<std::string>;
    std::lock_guard<std::mutex> lock(mutex);
    return const_cast<char *>(texts.insert(text).first->c_str());
}

void writeToBuffer(char *buffer, const std::string &text)
{
    const std::size_t size = std::min<std::size_t>(text.size(), UserInformationLength);
    std::memcpy(buffer, text.data(), size);
    buffer[size] = '\0';
}

void writeOutput(char *&target, const Value &value)
{
    const auto *text = std::get_if<std::string>(&value);
    target = text ? lastingText(*text) : nullptr;
}

void writeOutput(void *&target, const Value &)
{
    target = nullptr;
}

void writeOutput(std::vector<char *> &target, const Value &value)
{
    const auto *texts = std::get_if<Texts>(&value);
    if (!texts)
        return;
    target.clear();
    for (const auto &text : *texts)
        target.push_back(text ? lastingText(*text) : nullptr);
}

void writeOutput(ImageOutput &target, const Value &value)
{
    const auto *texts = std::get_if<Texts>(&value);
    if (!texts)
        return;
    target.pointers.clear();
    target.storage.clear();
    target.storage.reserve(texts->size());
    for (const auto &bytes : *texts) {
        if (!bytes) {
            target.pointers.push_back(nullptr);
            continue;
        }
        auto &image = target.storage.emplace_back(bytes->begin(), bytes->end());
        image.push_back(0); // an image of no bytes has an address too
        target.pointers.push_back(image.data());
    }
}

void writeOutput(BufferOutput &target, const Value &value)
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

void writeOutput(ReplacementOutput &target, const Value &value)
{
    const auto *text = std::get_if<std::string>(&value);
    if (!text)
        return;
    // Made before the original goes, so that its address is another.
    auto *replacement = new char[UserInformationLength + 1]();
    writeToBuffer(replacement, *text);
    delete[] target.buffer;
    target.buffer = replacement;
}

void corruptOutput(bool &target)
{
    target = !target;
}

void corruptOutput(int &target)
{
    target = ~target;
}

void corruptOutput(double &target)
{
    target = -target - 1.0;
}

void corruptOutput(std::string &target)
{
    for (char &byte : target)
        byte = static_cast<char>(~byte);
}

void corruptOutput(char *&target)
{
    if (!target)
        return;
    std::string text = target;
    corruptOutput(text);
    target = lastingText(text);
}

void corruptOutput(void *&target)
{
    target = nullptr;
}

void corruptOutput(std::vector<bool> &target)
{
    target.flip();
}

void corruptOutput(std::vector<int> &target)
{
    for (int &value : target)
        corruptOutput(value);
}

void corruptOutput(std::vector<char *> &target)
{
    for (char *&text : target)
        corruptOutput(text);
}

void corruptOutput(ImageOutput &target)
{
    for (auto &image : target.storage)
        complement(image.data(), image.size());
}

void corruptOutput(BufferOutput &target)
{
    // To its last byte, the terminating zero too: only a reader that keeps count survives it.
    if (target.buffer)
        complement(reinterpret_cast<unsigned char *>(target.buffer), UserInformationLength + 1);
}

void corruptOutput(ReplacementOutput &)
{
    // The same buffer as the one above.
}

} // namespace Tessel3SyncSimulator
