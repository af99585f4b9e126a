#ifndef VIRTUALSCANNER_VIRTUALMOTOR_H
#define VIRTUALSCANNER_VIRTUALMOTOR_H

#include "MotorAxis.h"
#include "PropertyTable.h"

#include <vector>

namespace VirtualScanner {

/// The motor capability: rotate returns at once, the axes move over time. An empty list of axes
/// means every axis of the device. A list with an axis that the device lacks moves nothing.
class VirtualMotor : public MotorSpace::MotorInterface
{
public:
    VirtualMotor(DeviceGate &deviceGate, PropertyTable &properties,
                 const QList<MotorSpace::AxisType> &axisTypes);

    ErrorCode rotate(const QList<MotorSpace::RotateInfo> &movements) override;
    ErrorCode waitMotorStop(const QList<MotorSpace::AxisType> &types) override;
    ErrorCode resetMotor(const QList<MotorSpace::AxisType> &types) override;
    ErrorCode stopMotor(const QList<MotorSpace::AxisType> &types) override;

private:
    MotorAxis *find(MotorSpace::AxisType type);
    /// The axes that are meant; none if one is not there.
    std::vector<MotorAxis *> select(const QList<MotorSpace::AxisType> &types);
    ErrorCode getPosition(Values &values);

    DeviceGate &gate;
    std::vector<MotorAxis> axes;
};

} // namespace VirtualScanner

#endif
