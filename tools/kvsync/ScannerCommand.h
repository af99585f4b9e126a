#ifndef KVSYNC_SCANNERCOMMAND_H
#define KVSYNC_SCANNERCOMMAND_H

#include "Command.h"

namespace KvSyncCli {

// The commands below "scanner": one file each, one row each in ScannerCommand.cpp.
void addScannerListCommand(CLI::App &scanner, Command &chosen);
void addScannerInfoCommand(CLI::App &scanner, Command &chosen);
void addScannerGetCommand(CLI::App &scanner, Command &chosen);
void addScannerSetCommand(CLI::App &scanner, Command &chosen);
void addScannerSnapCommand(CLI::App &scanner, Command &chosen);
void addScannerLinkCommand(CLI::App &scanner, Command &chosen);
void addScannerUserInfoCommand(CLI::App &scanner, Command &chosen);

} // namespace KvSyncCli

#endif
