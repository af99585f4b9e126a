// The images of one delivery.
#ifndef TESSEL3SYNCSIMULATOR_PICTURE_H
#define TESSEL3SYNCSIMULATOR_PICTURE_H

#include "render/Exposure.h"
#include "scanner/PictureSource.h"

#include <memory>
#include <vector>

namespace Tessel3SyncSimulator {

ViewKey viewKey(const Shot &shot, CameraKind camera);

class Picture final : public PictureSource
{
public:
    bool isReady(const Shot &shot) const override;
    void prepare(const Shot &shot) override;
    Images &take(const Shot &shot) override;

private:
    std::vector<std::unique_ptr<const Exposure>> exposures;
    Images buffers;
};

} // namespace Tessel3SyncSimulator

#endif
