#include "ProgressBar.h"

#include "StandardOutput.h"

#include <cstdio>
#include <string>

namespace KvSyncCli {

namespace {

constexpr int barWidth = 40;

} // namespace

ProgressBar::ProgressBar()
    : isShown(isErrorOutputTerminal())
{
}

ProgressBar::~ProgressBar()
{
    if (isDrawn)
        std::fputc('\n', stderr);
}

void ProgressBar::show(int done, int dropped, int all)
{
    if (!isShown || all <= 0)
        return;
    const int filled = static_cast<int>(static_cast<long long>(barWidth) * done / all);
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(barWidth - filled), '.');
    std::fprintf(stderr, "\r[%s] %d of %d frames, %d dropped", bar.c_str(), done, all, dropped);
    std::fflush(stderr);
    isDrawn = true;
}

} // namespace KvSyncCli
