#ifndef KVSYNC_SIMULATOR_H
#define KVSYNC_SIMULATOR_H

#include <QtCore/QString>

// All that kvsync knows of the simulated scanner. With the maker's scanner library nothing of it
// has an effect.
namespace KvSyncCli {

/// Names the fault plan to the simulated scanner. To be called before the core is built: the
/// simulator reads the name at its first call. Throws `PathNotExist` if the file cannot be read and
/// `InvalidParameter` if it is not a regular file.
void useFaultPlan(const QString &file);

/// Names the file in which the simulated scanner keeps its user information; it need not exist.
void useUserInformationFile(const QString &file);

/// Throws `ConnectFailed` with the simulator's own words if its fault plan or its description of
/// the scanner cannot be used. To be asked once nothing was found: a plan counts this call too.
void requireUsableSimulator();

} // namespace KvSyncCli

#endif
