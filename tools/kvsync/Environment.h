#ifndef KVSYNC_ENVIRONMENT_H
#define KVSYNC_ENVIRONMENT_H

#include <QtCore/QString>

namespace KvSyncCli {

/// Names the simulated scanner's fault plan to it. To be called before the core is built: the
/// simulator reads the name at its first call. Throws `PathNotExist` if the file cannot be read.
void useFaultPlan(const QString &file);

/// Names the file in which the simulated scanner keeps its user information; it need not exist.
void useUserInformationFile(const QString &file);

} // namespace KvSyncCli

#endif
