#include "support/LogCapture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

namespace KvSyncTest {

namespace {

LogCapture *current = nullptr;

Channel qtChannel(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return Channel::QtDebug;
    case QtCriticalMsg:
        return Channel::QtCritical;
    default:
        return Channel::QtOther;
    }
}

Channel glogChannel(google::LogSeverity severity)
{
    switch (severity) {
    case google::GLOG_INFO:
        return Channel::GlogInfo;
    case google::GLOG_ERROR:
        return Channel::GlogError;
    default:
        return Channel::GlogOther;
    }
}

const char *channelName(Channel channel)
{
    switch (channel) {
    case Channel::QtDebug:
        return "Qt debug";
    case Channel::QtCritical:
        return "Qt critical";
    case Channel::QtOther:
        return "Qt other";
    case Channel::GlogInfo:
        return "glog INFO";
    case Channel::GlogError:
        return "glog ERROR";
    case Channel::GlogOther:
        return "glog other";
    }
    return "unknown";
}

} // namespace

std::ostream &operator<<(std::ostream &stream, const LogLine &line)
{
    return stream << channelName(line.channel) << " \"" << line.text.toStdString() << '"';
}

LogLine debugLine(const QString &text)
{
    return {Channel::QtDebug, text, {}, {}, {}, 0};
}

LogLine criticalLine(const QString &text)
{
    return {Channel::QtCritical, text, {}, {}, {}, 0};
}

LogLine glogInfoLine(const QString &text)
{
    return {Channel::GlogInfo, text, {}, {}, {}, 0};
}

LogLine glogErrorLine(const QString &text)
{
    return {Channel::GlogError, text, {}, {}, {}, 0};
}

void expectWrittenBy(const LogLine &line, const std::string &operation, const std::string &fileName)
{
    EXPECT_EQ(line.category, "KvSyncTool") << line;
    EXPECT_THAT(line.function.toStdString(), ::testing::HasSubstr(operation)) << line;
    // A lambda's or a template's signature goes on behind the operation's.
    EXPECT_THAT(line.function.toStdString(), ::testing::EndsWith(")")) << line;
    EXPECT_THAT(line.file.toStdString(), ::testing::EndsWith(fileName)) << line;
    EXPECT_GT(line.line, 0) << line;
}

LogCapture::LogCapture(Listener onLine)
    : listener(std::move(onLine))
{
    Q_ASSERT(!current);
    current = this;
    previousHandler = qInstallMessageHandler(&LogCapture::handleQtMessage);
    google::AddLogSink(this);
}

LogCapture::~LogCapture()
{
    google::RemoveLogSink(this);
    qInstallMessageHandler(previousHandler);
    current = nullptr;
}

std::vector<LogLine> LogCapture::lines() const
{
    const QMutexLocker locker(&mutex);
    return captured;
}

std::vector<LogLine> LogCapture::lines(Channel channel) const
{
    const std::vector<LogLine> all = lines();
    std::vector<LogLine> matching;
    std::copy_if(all.begin(), all.end(), std::back_inserter(matching),
                 [channel](const LogLine &line) { return line.channel == channel; });
    return matching;
}

void LogCapture::clear()
{
    const QMutexLocker locker(&mutex);
    captured.clear();
}

void LogCapture::send(google::LogSeverity severity, const char *fullFileName, const char *,
                      int line, const struct ::tm *, const char *message, size_t length)
{
    append({glogChannel(severity),
            QString::fromUtf8(message, static_cast<int>(length)),
            {},
            {},
            QString::fromUtf8(fullFileName),
            line});
}

void LogCapture::handleQtMessage(QtMsgType type, const QMessageLogContext &context,
                                 const QString &text)
{
    current->append({qtChannel(type), text, QString::fromUtf8(context.function),
                     QString::fromUtf8(context.category), QString::fromUtf8(context.file),
                     context.line});
}

void LogCapture::append(const LogLine &line)
{
    {
        const QMutexLocker locker(&mutex);
        captured.push_back(line);
    }
    if (listener)
        listener(line);
}

} // namespace KvSyncTest
