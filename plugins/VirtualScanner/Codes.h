#ifndef VIRTUALSCANNER_CODES_H
#define VIRTUALSCANNER_CODES_H

#include "KvSyncTool/ErrorCode.h"

// A plug-in may return codes of its own: the core hands them to the caller unchanged. These
// use a group byte (0xF0) that the core's table leaves free.
namespace VirtualScanner {

constexpr ErrorCode codeOf(int number)
{
    return static_cast<ErrorCode>(0x01F00000 + number);
}

constexpr ErrorCode NotConnected = codeOf(1);    ///< connectDeviceByIndex comes first
constexpr ErrorCode NoSuchIndex = codeOf(2);     ///< no device stands at that index
constexpr ErrorCode OtherDevice = codeOf(3);     ///< a device of another kind stands there
constexpr ErrorCode DeviceVanished = codeOf(4);  ///< the device is gone, or went during the call
constexpr ErrorCode UnknownDevice = codeOf(5);   ///< not made by this factory, or destroyed
constexpr ErrorCode UnknownProperty = codeOf(6); ///< no property of that name
constexpr ErrorCode PropertyNotReadable = codeOf(7);
constexpr ErrorCode PropertyNotWritable = codeOf(8);
constexpr ErrorCode BadValue = codeOf(9);           ///< a key is missing or out of range
constexpr ErrorCode NoSuchSensor = codeOf(10);      ///< camera selector out of range
constexpr ErrorCode StreamRunning = codeOf(11);     ///< stopStream comes first
constexpr ErrorCode NoFrame = codeOf(12);           ///< no frame came in time
constexpr ErrorCode WrongTriggerMode = codeOf(13);  ///< the camera waits for another trigger
constexpr ErrorCode PatternDoesNotFit = codeOf(14); ///< wrong size, place, or no memory left
constexpr ErrorCode NoSuchAxis = codeOf(15);
constexpr ErrorCode AxisMoving = codeOf(16);       ///< waitMotorStop or stopMotor comes first
constexpr ErrorCode ChannelBusy = codeOf(17);      ///< another caller holds the command channel
constexpr ErrorCode ChannelNotLocked = codeOf(18); ///< not locked, or by another caller
constexpr ErrorCode UnknownCommand = codeOf(19);
constexpr ErrorCode NoAnswer = codeOf(20);         ///< there is no answer to a command of that kind
constexpr ErrorCode BadFirewareImage = codeOf(21); ///< not an image of this controller
constexpr ErrorCode DeviceInUse = codeOf(22);      ///< another handle is connected with the device
constexpr ErrorCode NoThread = codeOf(23);         ///< the system has no thread for the stream

} // namespace VirtualScanner

#endif
