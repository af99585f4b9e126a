#include "SimulatorTurntable.h"

#include "Errors.h"
#include "Parameters.h"

#include <QtCore/QLibrary>

namespace Scanner::DirectLink {

namespace {

constexpr double farthestDegrees = 3600000.0;

// The scanner library is loaded already, under the name that it has on this system.
QFunctionPointer find(const char *symbol)
{
    for (const char *library : {"Tessel3Sync", "libTessel3Sync"}) {
        if (const QFunctionPointer function = QLibrary::resolve(QLatin1String(library), symbol))
            return function;
    }
    raise(FunctionNotExist,
          QStringLiteral("The scanner library has no turntable: it is not the simulator"));
}

double presentDegrees()
{
    return reinterpret_cast<double (*)()>(find("Tessel3SyncSimulator_turntableAngle"))();
}

bool setDegrees(double degrees)
{
    return reinterpret_cast<int (*)(double)>(find("Tessel3SyncSimulator_setTurntableAngle"))(
               degrees) != 0;
}

} // namespace

void rotateSimulatorTurntable(const QString &name, const QVariantMap &parameters, bool isRelative)
{
    if (name != QLatin1String("simulator"))
        raise(FunctionNotExist,
              QStringLiteral("There is no turntable \"%1\", but simulator").arg(name));
    const double degrees =
        realNumberFrom(parameters.value(QStringLiteral("degrees")), QStringLiteral("\"degrees\""),
                       -farthestDegrees, farthestDegrees);
    const double target = isRelative ? presentDegrees() + degrees : degrees;
    if (!setDegrees(target))
        raise(
            InvalidParameter,
            QStringLiteral("The turntable refuses an angle of %1 degrees").arg(target, 0, 'g', 10));
}

} // namespace Scanner::DirectLink
