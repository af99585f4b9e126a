#ifndef SCANNER_DIRECTLINK_SIMULATORTURNTABLE_H
#define SCANNER_DIRECTLINK_SIMULATORTURNTABLE_H

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Scanner::DirectLink {

/// Turns the table "simulator", on which the simulated scanner's object stands: to the angle
/// {"degrees"}, or by so much if `isRelative`. The direct link has no turntable of its own. Throws
/// `FunctionNotExist` for another name or a scanner library without a simulated table, and
/// `InvalidParameter` for what is no angle, or one that the simulator refuses.
void rotateSimulatorTurntable(const QString &name, const QVariantMap &parameters, bool isRelative);

} // namespace Scanner::DirectLink

#endif
