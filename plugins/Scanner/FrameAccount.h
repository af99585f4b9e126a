#ifndef SCANNER_FRAMEACCOUNT_H
#define SCANNER_FRAMEACCOUNT_H

#include <QtCore/QVariant>

#include <array>
#include <map>

namespace Scanner {

/// The most frames that a host can ask for at once.
constexpr int mostFrames = 1000000000;

/// Why a frame was not given to the host, though the scanner made it.
enum class DropCause {
    Lost,     ///< its number has not come
    HostSlow, ///< too many others waited for the host's slots
    Unusable, ///< an image of it was missing, or had no pixels
    Stopped,  ///< it still waited when the scan ended
};

/// What became of the frames of one scan, whose numbers begin at 1. Each that came is delivered or
/// dropped; a number that is missing before one that came is a frame lost on the way, until it
/// comes late. Numbers are the library's and may be any, so sums of them need 64 bits.
class FrameAccount
{
public:
    explicit FrameAccount(int framesAskedFor = 0);

    void came(int number);
    void delivered();
    void dropped(DropCause cause, qint64 count = 1);

    /// {"frames", "produced", "delivered", "dropped", "causes": {"lost", "hostSlow", "unusable",
    /// "stopped"}, "disordered"}
    QVariantMap toMap() const;

private:
    void miss(int first, int last);
    void takeBack(int number);

    int framesAsked;
    int lastNumber = 0;
    qint64 deliveredFrames = 0;
    std::array<qint64, 4> droppedFrames{}; ///< by cause
    qint64 disordered = 0;                 ///< came with a number not above an earlier one
    std::map<int, int> missing;            ///< the latest gaps, first to last number
};

} // namespace Scanner

#endif
