#ifndef VIRTUALSCANNER_FRAMEDELIVERY_H
#define VIRTUALSCANNER_FRAMEDELIVERY_H

#include "CameraSensor.h"

#include <thread>
#include <vector>

namespace VirtualScanner {

/// A camera's thread: it takes the frames that come by themselves and makes every frame ready, as a
/// driver's thread does when its device sends. Callers wait for frames on the gate, never on the
/// thread.
///
/// The thread starts with the first stream and ends with this object. By then no caller may be
/// inside the device: DeviceGate::close sees to that, while the thread still serves those who wait.
class FrameDelivery
{
public:
    FrameDelivery(DeviceGate &deviceGate, std::vector<CameraSensor> &cameraSensors);
    ~FrameDelivery();
    FrameDelivery(const FrameDelivery &) = delete;
    FrameDelivery &operator=(const FrameDelivery &) = delete;

    /// With the device locked. False if the system has no thread to give.
    bool start();

private:
    void run();
    /// Makes a frame ready, if there is one; gives the lock up meanwhile.
    bool renderOne(DeviceGate::Lock &lock);
    Clock::time_point nextFrameTime() const;

    DeviceGate &gate;
    std::vector<CameraSensor> &sensors;
    std::size_t turn = 0; ///< the sensor to be served first
    bool ending = false;
    std::thread thread;
};

} // namespace VirtualScanner

#endif
