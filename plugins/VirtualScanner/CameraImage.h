#ifndef VIRTUALSCANNER_CAMERAIMAGE_H
#define VIRTUALSCANNER_CAMERAIMAGE_H

#include "KvSyncDevice/CameraInterface.h"

namespace VirtualScanner {

constexpr unsigned int sensorWidth = 640;
constexpr unsigned int sensorHeight = 480;
constexpr unsigned int referenceExposureUs = 10000; ///< shows the scene as it is, at gain 0
constexpr unsigned int referenceGain = 16;          ///< so many gain steps double the brightness

/// What decides the pixels of a frame.
struct ImageSettings
{
    unsigned int width = sensorWidth;
    unsigned int height = sensorHeight;
    unsigned int offsetX = 0;
    unsigned int offsetY = 0;
    unsigned int exposureUs = referenceExposureUs;
    unsigned int gain = 0;
    CameraSpace::PixelFormatType format = CameraSpace::Mono8;
};

/// Bits of one color value.
int bitDepthOf(CameraSpace::PixelFormatType format);

/// The region of interest of one frame: rows from the top without padding. Values of more than 8
/// bits take two bytes, the lower first; RGB8 takes three bytes a pixel; BayerRG8 has red at the
/// sensor's even columns and rows. The scene is a gradient with squares and a disc that moves from
/// frame to frame. Integers only, so that a frame has the same bytes on every system.
QByteArray renderImage(const ImageSettings &settings, int sensor, qint64 frame);

} // namespace VirtualScanner

#endif
