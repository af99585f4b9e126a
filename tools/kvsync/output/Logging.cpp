#include "output/Logging.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QString>
#include <glog/logging.h>

#include <cstdio>
#include <cstring>

namespace KvSyncCli {

namespace {

constexpr char libraryCategory[] = "KvSyncTool"; // that of KvSyncTool::ToolLogger()

bool showsAll = false;
QLoggingCategory::CategoryFilter otherwise = nullptr;

// Rules of the environment go before those that a program sets, but not before its filter.
void filter(QLoggingCategory *category)
{
    otherwise(category);
    if (std::strcmp(category->categoryName(), libraryCategory) != 0)
        return;
    for (const QtMsgType level : {QtDebugMsg, QtInfoMsg, QtWarningMsg, QtCriticalMsg})
        category->setEnabled(level, showsAll);
}

void discard(QtMsgType, const QMessageLogContext &, const QString &)
{
}

void printToErrorOutput(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, text).toUtf8().constData());
}

} // namespace

void configureLogging(bool verbose)
{
    FLAGS_logtostderr = true;
    FLAGS_minloglevel = verbose ? google::GLOG_INFO : google::GLOG_FATAL;
    google::InitGoogleLogging("kvsync");
    showsAll = verbose;
    otherwise = QLoggingCategory::installFilter(nullptr);
    QLoggingCategory::installFilter(filter);
    qInstallMessageHandler(verbose ? printToErrorOutput : discard);
}

} // namespace KvSyncCli
