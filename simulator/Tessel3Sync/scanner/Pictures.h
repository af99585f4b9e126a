// The rendered images of frames and snapshots.
#ifndef TESSEL3SYNCSIMULATOR_PICTURES_H
#define TESSEL3SYNCSIMULATOR_PICTURES_H

#include "scanner/PictureSource.h"

#include <memory>
#include <vector>

namespace Tessel3SyncSimulator {

class Pictures final : public PictureSource
{
public:
    bool isReady(const Shot &shot) const override;
    void prepare(const Shot &shot) override;
    Images &take(const Shot &shot) override;

private:
    std::vector<std::unique_ptr<const Exposure>> exposures;
    Images buffers;
};

/// The red, green and blue plane that the shot's one camera takes. Any thread; the simulator's
/// mutex must not be held.
Images takeSnapshot(const Shot &shot);

} // namespace Tessel3SyncSimulator

#endif
