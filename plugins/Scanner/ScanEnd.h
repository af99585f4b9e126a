#ifndef SCANNER_SCANEND_H
#define SCANNER_SCANEND_H

#include "FrameAccount.h"
#include "Publish.h"

#include <QtCore/QString>

namespace Scanner {

enum class EndReason { Complete, Stopped, ConnectionLost, Failed };

/// How a scan ended.
struct ScanEnd
{
    EndReason reason = EndReason::Complete;
    QString text; ///< a sentence; empty if complete
};

/// Publishes "scanEnded". What a slot throws is logged: the scan is over whatever it thinks.
void publishEnd(const Publish &publish, const ScanEnd &end, const FrameAccount &account) noexcept;

} // namespace Scanner

#endif
