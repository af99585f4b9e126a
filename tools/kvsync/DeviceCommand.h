#ifndef KVSYNC_DEVICECOMMAND_H
#define KVSYNC_DEVICECOMMAND_H

#include "Command.h"

namespace KvSyncCli {

// The commands below "device": one file each (get and set share one with the scanner's), one row
// each in DeviceCommand.cpp.
void addDeviceListCommand(CLI::App &device, Command &chosen);
void addDeviceInfoCommand(CLI::App &device, Command &chosen);
void addDeviceGetCommand(CLI::App &device, Command &chosen);
void addDeviceSetCommand(CLI::App &device, Command &chosen);
void addDeviceRotateCommand(CLI::App &device, Command &chosen);
void addDeviceCaptureCommand(CLI::App &device, Command &chosen);

} // namespace KvSyncCli

#endif
