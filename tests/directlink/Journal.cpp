#include "Journal.h"

#include "StandardOutput.h"
#include "support/RecordingScanner/RecordingScanner.h"

#include <QtCore/QString>
#include <glog/logging.h>

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
std::string operationOf(const QMessageLogContext &context)
{
    const std::string signature(context.function ? context.function : "no signature");
    const std::string scope("KvSyncCore::DeviceManager::");
    const std::size_t start = signature.find(scope);
    // A helper, or a lambda inside the operation, is not the operation itself.
    if (start == std::string::npos || signature.back() != ')')
        return signature;
    const std::size_t name = start + scope.size();
    return signature.substr(name, signature.find('(', name) - name);
}

const char *levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtCriticalMsg:
        return "critical";
    default:
        return "of a level that the core does not use";
    }
}

class Recording : private google::LogSink
{
public:
    Recording()
    {
        Q_ASSERT(!current);
        current = this;
        previousHandler = qInstallMessageHandler(&Recording::handleQtMessage);
        google::AddLogSink(this);
        recordingScanner().onCall = [this](const std::string &call) { append(call); };
    }

    ~Recording() override
    {
        recordingScanner().onCall = nullptr;
        google::RemoveLogSink(this);
        qInstallMessageHandler(previousHandler);
        current = nullptr;
    }

    Recording(const Recording &) = delete;
    Recording &operator=(const Recording &) = delete;

    Journal take()
    {
        appendOutput();
        return journal;
    }

private:
    void send(google::LogSeverity severity, const char *, const char *, int, const struct ::tm *,
              const char *message, size_t length) override
    {
        const char *level = severity == google::GLOG_INFO    ? "INFO"
                            : severity == google::GLOG_ERROR ? "ERROR"
                                                             : "of another severity";
        append(glogLine(level, std::string(message, length)));
    }

    static void handleQtMessage(QtMsgType type, const QMessageLogContext &context,
                                const QString &text)
    {
        std::string line = qtLine(levelName(type), operationOf(context), text.toStdString());
        if (qstrcmp(context.category, "KvSyncTool") != 0)
            line += " (in another category)";
        if (!context.file || context.line <= 0)
            line += " (from no place in the code)";
        current->append(line);
    }

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

    static inline Recording *current = nullptr;
    QtMessageHandler previousHandler;
    StandardOutput standardOutput;
    Journal journal;
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
