// A program that logs while its static objects end, long after main. Its exit status says whether
// the category still was the one that filter rules reach, and whether the line came out.

#include "KvSyncTool/ToolLogger.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

int arrivals = 0;

void countLines(QtMsgType, const QMessageLogContext &context, const QString &text)
{
    if (std::strcmp(context.category, "KvSyncTool") == 0 && text == QLatin1String("last words"))
        ++arrivals;
}

void check(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "at exit: not %s\n", what);
    std::_Exit(EXIT_FAILURE);
}

/// Begins before the category does, so it ends after whatever ends with the category's library.
class LastWords
{
public:
    // Qt's own list of categories must be there to the end.
    LastWords() { QLoggingCategory::defaultCategory(); }

    ~LastWords()
    {
        qInstallMessageHandler(countLines);
        QLoggingCategory::setFilterRules("KvSyncTool.debug=false");
        check(!KvSyncTool::ToolLogger().isDebugEnabled(), "reached by filter rules");
        check(KvSyncTool::ToolLogger().isCriticalEnabled(), "enabled for critical lines");
        qCCritical(KvSyncTool::ToolLogger).noquote() << "last words";
        check(arrivals == 1, "heard");
        std::fputs("logged at exit\n", stdout);
    }
};

const LastWords lastWords;

} // namespace

int main()
{
    return KvSyncTool::ToolLogger().isDebugEnabled() ? EXIT_SUCCESS : EXIT_FAILURE;
}
