#include "Journal.h"

#include "StandardOutput.h"
#include "support/LogCapture.h"
#include "support/RecordingScanner/RecordingScanner.h"

namespace KvSyncTest {

namespace {

#if defined(_WIN32)
constexpr char lineEnd[] = "\r\n";
#else
constexpr char lineEnd[] = "\n";
#endif

std::string qtLine(const char *level, const std::string &operation, const std::string &text)
{
    return std::string("Qt ") + level + " [" + operation + "]: " + text;
}

std::string glogLine(const char *level, const std::string &text)
{
    return std::string("glog ") + level + ": " + text;
}

/// "getGain" of "ErrorCode KvSyncCore::DeviceManager::getGain(...)", else the whole signature.
std::string operationOf(const LogLine &line)
{
    const std::string signature = line.function.toStdString();
    const std::string scope("KvSyncCore::DeviceManager::");
    const std::size_t start = signature.find(scope);
    // A helper, or a lambda inside the operation, is not the operation itself.
    if (start == std::string::npos || signature.back() != ')')
        return signature;
    const std::size_t name = start + scope.size();
    return signature.substr(name, signature.find('(', name) - name);
}

std::string entryOf(const LogLine &line)
{
    const std::string text = line.text.toStdString();
    switch (line.channel) {
    case Channel::GlogInfo:
        return glogInfo(text);
    case Channel::GlogError:
        return glogError(text);
    case Channel::GlogOther:
        return glogLine("of another severity", text);
    case Channel::QtDebug:
    case Channel::QtCritical:
    case Channel::QtOther:
        break;
    }
    const char *const level = line.channel == Channel::QtDebug      ? "debug"
                              : line.channel == Channel::QtCritical ? "critical"
                                                                    : "of another level";
    std::string entry = qtLine(level, operationOf(line), text);
    if (line.category != "KvSyncTool")
        entry += " (in another category)";
    if (line.file.isEmpty() || line.line <= 0)
        entry += " (from no place in the code)";
    return entry;
}

class Recording
{
public:
    Recording()
    {
        recordingScanner().onCall = [this](const std::string &call) { append(call); };
    }

    ~Recording() { recordingScanner().onCall = nullptr; }

    Recording(const Recording &) = delete;
    Recording &operator=(const Recording &) = delete;

    Journal take()
    {
        appendOutput();
        return journal;
    }

private:
    void append(const std::string &entry)
    {
        // Whatever was printed came first.
        appendOutput();
        journal.push_back(entry);
    }

    void appendOutput()
    {
        const std::string output = standardOutput.takeNew();
        for (std::size_t start = 0; start < output.size();) {
            const std::size_t end = output.find('\n', start);
            const std::size_t next = end == std::string::npos ? output.size() : end + 1;
            journal.push_back("stdout: " + output.substr(start, next - start));
            start = next;
        }
    }

    StandardOutput standardOutput;
    Journal journal;
    const LogCapture log{[this](const LogLine &line) { append(entryOf(line)); }};
};

} // namespace

Journal journalOf(const std::function<void()> &run)
{
    Recording recording;
    run();
    return recording.take();
}

std::string debug(const std::string &operation, const std::string &text)
{
    return qtLine("debug", operation, text);
}

std::string critical(const std::string &operation, const std::string &text)
{
    return qtLine("critical", operation, text);
}

std::string glogInfo(const std::string &text)
{
    return glogLine("INFO", text);
}

std::string glogError(const std::string &text)
{
    return glogLine("ERROR", text);
}

std::string printed(const std::string &line)
{
    return "stdout: " + line + lineEnd;
}

} // namespace KvSyncTest
