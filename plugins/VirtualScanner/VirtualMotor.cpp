#include "VirtualMotor.h"

#include <QtCore/QSet>

#include <algorithm>

namespace VirtualScanner {

namespace {

QString axisName(MotorSpace::AxisType type)
{
    switch (type) {
    case MotorSpace::TurntableAxis:
        return QStringLiteral("turntable");
    case MotorSpace::TiltAxis:
        return QStringLiteral("tilt");
    case MotorSpace::LiftAxis:
        break;
    }
    return QStringLiteral("lift");
}

} // namespace

VirtualMotor::VirtualMotor(DeviceGate &deviceGate, PropertyTable &properties,
                           const QList<MotorSpace::AxisType> &axisTypes)
    : gate(deviceGate)
    , axes(axisTypes.begin(), axisTypes.end())
{
    gate.onLoss([this] {
        for (MotorAxis &axis : axes)
            axis = MotorAxis(axis.type());
    });
    properties.add(QStringLiteral("position"),
                   [this](Values &values) { return getPosition(values); });
}

ErrorCode VirtualMotor::rotate(const QList<MotorSpace::RotateInfo> &movements)
{
    return gate.run("rotate", [&] {
        // All or nothing: every movement is checked before the first axis starts.
        QSet<int> seen;
        for (const MotorSpace::RotateInfo &movement : movements) {
            const MotorAxis *const axis = find(movement.axis);
            if (!axis)
                return NoSuchAxis;
            const ErrorCode code = axis->check(movement);
            if (code != Success)
                return code;
            if (seen.contains(movement.axis))
                return AxisMoving;
            seen.insert(movement.axis);
        }
        for (const MotorSpace::RotateInfo &movement : movements)
            find(movement.axis)->move(movement);
        return Success;
    });
}

ErrorCode VirtualMotor::waitMotorStop(const QList<MotorSpace::AxisType> &types)
{
    return gate.runWaiting("waitMotorStop", [&](DeviceGate::Call &call) {
        const std::vector<MotorAxis *> chosen = select(types);
        if (chosen.empty())
            return NoSuchAxis;
        for (const MotorAxis *axis : chosen) {
            // Again after each wake: another caller may have stopped the axis, or moved it on.
            while (axis->isMoving()) {
                const auto isStill = [axis] { return !axis->isMoving(); };
                const ErrorCode code = gate.waitUntil(call, axis->arrivalTime(), isStill);
                if (code != Success)
                    return code;
            }
        }
        return Success;
    });
}

ErrorCode VirtualMotor::resetMotor(const QList<MotorSpace::AxisType> &types)
{
    return gate.run("resetMotor", [&] {
        const std::vector<MotorAxis *> chosen = select(types);
        for (MotorAxis *axis : chosen)
            axis->moveToReference();
        gate.wake();
        return chosen.empty() ? NoSuchAxis : Success;
    });
}

ErrorCode VirtualMotor::stopMotor(const QList<MotorSpace::AxisType> &types)
{
    return gate.run("stopMotor", [&] {
        const std::vector<MotorAxis *> chosen = select(types);
        for (MotorAxis *axis : chosen)
            axis->stop();
        gate.wake();
        return chosen.empty() ? NoSuchAxis : Success;
    });
}

MotorAxis *VirtualMotor::find(MotorSpace::AxisType type)
{
    const auto axis = std::find_if(axes.begin(), axes.end(), [type](const MotorAxis &candidate) {
        return candidate.type() == type;
    });
    return axis == axes.end() ? nullptr : &*axis;
}

std::vector<MotorAxis *> VirtualMotor::select(const QList<MotorSpace::AxisType> &types)
{
    std::vector<MotorAxis *> chosen;
    if (types.isEmpty()) {
        for (MotorAxis &axis : axes)
            chosen.push_back(&axis);
        return chosen;
    }
    for (const MotorSpace::AxisType type : types) {
        MotorAxis *const axis = find(type);
        if (!axis)
            return {};
        chosen.push_back(axis);
    }
    return chosen;
}

ErrorCode VirtualMotor::getPosition(Values &values)
{
    return gate.run("getProperty", [&] {
        for (const MotorAxis &axis : axes)
            values.insert(axisName(axis.type()), axis.positionDegrees());
        return Success;
    });
}

} // namespace VirtualScanner
