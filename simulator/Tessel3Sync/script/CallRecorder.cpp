#include "script/CallRecorder.h"

#include <charconv>

namespace Tessel3SyncSimulator {

namespace {

constexpr std::size_t kept = 10000;

template <typename List>
std::string listText(const List &list)
{
    std::string text;
    for (const auto &element : list)
        text += (text.empty() ? "" : ", ") + argumentText(element);
    return "[" + text + "]";
}

template <typename Number, typename... Format>
std::string numberText(Number number, Format... format)
{
    char digits[40];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, format...).ptr;
    return std::string(digits, end);
}

} // namespace

int CallRecorder::record(const Call &call)
{
    newest.push_back(call);
    if (newest.size() > kept)
        newest.pop_front();
    return ++counts[call.function];
}

std::vector<Call> CallRecorder::calls() const
{
    return {newest.begin(), newest.end()};
}

void CallRecorder::clearCalls()
{
    newest.clear();
}

int CallRecorder::count(const std::string &function) const
{
    const auto found = counts.find(function);
    return found == counts.end() ? 0 : found->second;
}

std::string argumentText(bool value)
{
    return value ? "true" : "false";
}

std::string argumentText(int value)
{
    return numberText(value);
}

std::string argumentText(double value)
{
    return numberText(value);
}

std::string argumentText(const char *text)
{
    return text ? argumentText(std::string(text)) : "null";
}

std::string argumentText(const void *pointer)
{
    return pointer ? "0x" + numberText(reinterpret_cast<std::uintptr_t>(pointer), 16) : "null";
}

std::string argumentText(const std::string &bytes)
{
    return '"' + bytes + '"';
}

std::string argumentText(const std::vector<bool> &values)
{
    return listText(values);
}

std::string argumentText(const std::vector<int> &values)
{
    return listText(values);
}

std::string argumentText(const std::vector<char *> &texts)
{
    return listText(texts);
}

std::string addressText(const void *pointer)
{
    return argumentText(pointer);
}

std::string callText(const Call &call)
{
    std::string text;
    for (const std::string &argument : call.arguments)
        text += (text.empty() ? "" : ", ") + argument;
    return call.function + "(" + text + ")";
}

} // namespace Tessel3SyncSimulator
