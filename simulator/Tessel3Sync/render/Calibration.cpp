#include "render/Calibration.h"

#include "render/Scene.h"

namespace Tessel3SyncSimulator {

namespace {

Vector position(CameraKind kind)
{
    switch (kind) {
    case CameraKind::LeftSpeckle:
        return {-60.0, 0.0, 0.0};
    case CameraKind::RightSpeckle:
        return {60.0, 0.0, 0.0};
    case CameraKind::Color:
        break;
    }
    return {0.0, 35.0, 0.0};
}

} // namespace

Calibration cameraCalibration(CameraKind kind, int width, int height)
{
    const Vector eye = position(kind);
    const Vector forward = unit(Scene::center() - eye);
    const Vector right = unit(cross({0.0, 1.0, 0.0}, forward));
    const Vector down = cross(forward, right);

    Calibration calibration;
    calibration.width = width;
    calibration.height = height;
    calibration.focalLength = 1.6 * width;
    calibration.centreX = (width - 1) / 2.0;
    calibration.centreY = (height - 1) / 2.0;
    calibration.position = {eye.x, eye.y, eye.z};
    calibration.rotation = {right.x, right.y,   right.z,   down.x,   down.y,
                            down.z,  forward.x, forward.y, forward.z};
    return calibration;
}

} // namespace Tessel3SyncSimulator
