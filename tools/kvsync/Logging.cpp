#include "Logging.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QString>
#include <glog/logging.h>

#include <cstdio>

namespace KvSyncCli {

namespace {

void discard(QtMsgType, const QMessageLogContext &, const QString &)
{
}

void printToErrorOutput(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    std::fprintf(stderr, "%s\n", qFormatLogMessage(type, context, text).toUtf8().constData());
}

} // namespace

Logging::Logging(bool verbose)
{
    FLAGS_logtostderr = true;
    FLAGS_minloglevel = verbose ? google::GLOG_INFO : google::GLOG_FATAL;
    google::InitGoogleLogging("kvsync");
    if (verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("KvSyncTool.debug=true"));
    qInstallMessageHandler(verbose ? printToErrorOutput : discard);
}

Logging::~Logging()
{
    qInstallMessageHandler(nullptr);
    google::ShutdownGoogleLogging();
}

} // namespace KvSyncCli
