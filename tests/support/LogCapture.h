#ifndef KVSYNC_TESTS_LOGCAPTURE_H
#define KVSYNC_TESTS_LOGCAPTURE_H

#include <QtCore/QMutex>
#include <QtCore/QString>
#include <QtCore/QtGlobal>
#include <glog/logging.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace KvSyncTest {

enum class Channel { QtDebug, QtCritical, QtOther, GlogInfo, GlogError, GlogOther };

/// One line as it left the process, with the place in the code that wrote it.
struct LogLine
{
    Channel channel;
    QString text;
    QString function; ///< full compiler signature; Qt lines only
    QString category; ///< Qt lines only
    QString file;
    int line;

    bool operator==(const LogLine &other) const
    {
        return channel == other.channel && text == other.text;
    }
};

std::ostream &operator<<(std::ostream &stream, const LogLine &line);

/// Shorthands for expected lines; they compare by channel and text.
LogLine debugLine(const QString &text);
LogLine criticalLine(const QString &text);
LogLine glogInfoLine(const QString &text);
LogLine glogErrorLine(const QString &text);

/// Fails unless a Qt line stands in the system's one category and was written in `fileName`, by an
/// operation whose full signature holds `operation`, such as "KvSyncCore::SyncCore::init(".
void expectWrittenBy(const LogLine &line, const std::string &operation,
                     const std::string &fileName);

/// Collects every line of both channels, in order, while it lives, and tells the listener of each.
/// One at a time; lines may come from any thread.
class LogCapture : private google::LogSink
{
public:
    using Listener = std::function<void(const LogLine &line)>;

    explicit LogCapture(Listener onLine = {});
    ~LogCapture() override;
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    std::vector<LogLine> lines() const;
    std::vector<LogLine> lines(Channel channel) const;
    void clear();

private:
    void send(google::LogSeverity severity, const char *fullFileName, const char *baseFileName,
              int line, const struct ::tm *time, const char *message, size_t length) override;
    static void handleQtMessage(QtMsgType type, const QMessageLogContext &context,
                                const QString &text);
    void append(const LogLine &line);

    mutable QMutex mutex;
    std::vector<LogLine> captured;
    const Listener listener;
    QtMessageHandler previousHandler;
};

} // namespace KvSyncTest

#endif
