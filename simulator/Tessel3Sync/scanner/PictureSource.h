#ifndef TESSEL3SYNCSIMULATOR_PICTURESOURCE_H
#define TESSEL3SYNCSIMULATOR_PICTURESOURCE_H

#include "scanner/Shot.h"

#include <vector>

namespace Tessel3SyncSimulator {

/// Makes the images of frames, for the frame thread alone.
class PictureSource
{
public:
    using Images = std::vector<std::vector<unsigned char>>;

    virtual ~PictureSource() = default;

    /// Whether the scene that the shot shows is ready, so that taking it is quick; answers at once.
    virtual bool isReady(const Shot &shot) const = 0;

    // The simulator's mutex may not be held for these.

    /// Makes the scene ready, however long it takes.
    virtual void prepare(const Shot &shot) = 0;

    /// One buffer for each camera of the shot, valid until the next one is taken.
    virtual Images &take(const Shot &shot) = 0;
};

} // namespace Tessel3SyncSimulator

#endif
