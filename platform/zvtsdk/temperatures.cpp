// The SDK's functions of the camera's cooler and temperature sensors.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/Temperatures.h"
#include "platform/emulator/memberCalls.h"

using namespace emulator;

int zvtGetFPATemperature(uint64_t handle, float *temperature)
{
    return get<&Cooler::temperature>(__func__, handle, temperature);
}

int zvtGetFPAColdTemperature(uint64_t handle, float *temperature)
{
    return call<&Cooler::coldTemperature>(__func__, handle, temperature);
}

int zvtMfgGetCoolerType(uint64_t handle, uint8_t *type) { return get<&Cooler::type>(__func__, handle, type); }

int zvtMfgGetCoolerSetpoint(uint64_t handle, float *setpoint)
{
    return call<&Cooler::setpoint>(__func__, handle, setpoint);
}

int zvtMfgSetCoolerSetpoint(uint64_t handle, float setpoint)
{
    return call<&Cooler::setSetpoint>(__func__, handle, setpoint);
}

int zvtMfgGetCoolerPowerEnabled(uint64_t handle, uint8_t *enabled)
{
    const auto body = [&](Cooler &cooler) -> Status {
        bool on = false;
        const Status status = cooler.power(on);
        if (status == Ok)
            *enabled = on;
        return status;
    };
    return onDevice<Cooler>(__func__, handle, body, enabled);
}

int zvtMfgSetCoolerPowerEnabled(uint64_t handle, bool enabled)
{
    return call<&Cooler::setPower>(__func__, handle, enabled);
}

int zvtMfgGetCoolerSetup(uint64_t handle, float *kP, float *kI, float *kD, float *kOff)
{
    const auto body = [&](Cooler &cooler) -> Status {
        Cooler::Control control{};
        const Status status = cooler.control(control);
        if (status == Ok) {
            *kP = control.kP;
            *kI = control.kI;
            *kD = control.kD;
            *kOff = control.kOff;
        }
        return status;
    };
    return onDevice<Cooler>(__func__, handle, body, kP, kI, kD, kOff);
}

int zvtMfgSetCoolerSetup(uint64_t handle, float kP, float kI, float kD, float kOff)
{
    return onDevice<Cooler>(
        __func__, handle,
        [&](Cooler &c) {
            return c.setControl({kP, kI, kD, kOff});
        },
        kP, kI, kD, kOff);
}

const char *zvtCoolerTypeText(uint8_t type)
{
    return lookUp(
        __func__, [&] { return Cooler::typeName(type); }, type);
}

int zvtGetSCTemperatures(uint64_t handle, float *frontPanel, float *airGap, float *internal)
{
    return call<&Temperatures::scTemperatures>(__func__, handle, frontPanel, airGap, internal);
}

int zvtGetRSTemperatures(uint64_t handle, float *internal)
{
    return call<&Temperatures::rsTemperature>(__func__, handle, internal);
}

int zvtGetHasLensTemperature(uint64_t handle, uint8_t *has)
{
    return get<&Temperatures::hasLensSensor>(__func__, handle, has);
}

int zvtGetLensTemperature(uint64_t handle, float *temperature)
{
    return call<&Temperatures::lensTemperature>(__func__, handle, temperature);
}
