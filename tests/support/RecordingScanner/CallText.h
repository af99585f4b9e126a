#ifndef KVSYNC_TESTS_CALLTEXT_H
#define KVSYNC_TESTS_CALLTEXT_H

#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace KvSyncTest {

/// Writes a call as `Function(argument, ...)`.
class CallText
{
public:
    CallText(const char *function, const std::map<const void *, std::string> &pointerNames)
        : names(pointerNames)
    {
        stream << std::boolalpha << function << '(';
    }

    template <typename Argument>
    void add(const Argument &argument)
    {
        stream << separator;
        write(argument);
        separator = ", ";
    }

    std::string text() const { return stream.str() + ')'; }

private:
    template <typename Number>
    void write(const Number &number)
    {
        stream << number;
    }
    void write(const std::string &text) { stream << '"' << text << '"'; }
    void write(const char *text)
    {
        if (text)
            write(std::string(text));
        else
            stream << "null";
    }
    // Not known to be a text yet: a pointer that the library is to set, or a buffer to fill.
    void write(char *buffer) { writePointer(buffer); }
    void write(void *pointer) { writePointer(pointer); }
    void write(unsigned char *pixels) { writePointer(pixels); }
    template <typename Result, typename... Arguments>
    void write(Result (*function)(Arguments...))
    {
        writePointer(reinterpret_cast<const void *>(function));
    }
    template <typename Element>
    void write(const std::vector<Element> &list)
    {
        const char *between = "";
        stream << '[';
        for (const Element element : list) {
            stream << between;
            writeElement(element);
            between = ", ";
        }
        stream << ']';
    }
    template <typename Element>
    void writeElement(Element element)
    {
        write(element);
    }
    // In a list, the library's strings are complete.
    void writeElement(char *text) { write(static_cast<const char *>(text)); }

    void writePointer(const void *pointer)
    {
        const auto found = names.find(pointer);
        if (!pointer)
            stream << "null";
        else
            stream << (found == names.end() ? "?" : found->second);
    }

    const std::map<const void *, std::string> &names;
    std::ostringstream stream;
    const char *separator = "";
};

} // namespace KvSyncTest

#endif
