// The SDK's functions of the camera's cooler and temperature sensors.
#include "zvt/zvtsdk.h"

#include "platform/emulator/devices/Cooler.h"
#include "platform/emulator/devices/Temperatures.h"
#include "platform/emulator/dispatch.h"

using emulator::Cooler;
using emulator::onDevice;
using emulator::Status;
using emulator::Temperatures;

int zvtGetFPATemperature(uint64_t handle, float *temperature)
{
    return onDevice<Cooler>(
        __func__, handle, [&](Cooler &c) { *temperature = c.temperature(); }, temperature);
}

int zvtGetFPAColdTemperature(uint64_t handle, float *temperature)
{
    return onDevice<Cooler>(
        __func__, handle, [&](Cooler &c) { return c.coldTemperature(*temperature); }, temperature);
}

int zvtMfgGetCoolerType(uint64_t handle, uint8_t *type)
{
    return onDevice<Cooler>(
        __func__, handle, [&](Cooler &c) { *type = c.type(); }, type);
}

int zvtMfgGetCoolerSetpoint(uint64_t handle, float *setpoint)
{
    return onDevice<Cooler>(
        __func__, handle, [&](Cooler &c) { return c.setpoint(*setpoint); }, setpoint);
}

int zvtMfgSetCoolerSetpoint(uint64_t handle, float setpoint)
{
    return onDevice<Cooler>(
        __func__, handle, [&](Cooler &c) { return c.setSetpoint(setpoint); }, setpoint);
}

int zvtMfgGetCoolerPowerEnabled(uint64_t handle, uint8_t *enabled)
{
    const auto body = [&](Cooler &cooler) -> Status {
        bool on = false;
        const Status status = cooler.power(on);
        if (status == emulator::Ok)
            *enabled = on;
        return status;
    };
    return onDevice<Cooler>(__func__, handle, body, enabled);
}

int zvtMfgSetCoolerPowerEnabled(uint64_t handle, bool enabled)
{
    return onDevice<Cooler>(
        __func__, handle, [&](Cooler &c) { return c.setPower(enabled); }, enabled);
}

int zvtMfgGetCoolerSetup(uint64_t handle, float *kP, float *kI, float *kD, float *kOff)
{
    const auto body = [&](Cooler &cooler) -> Status {
        Cooler::Control control{};
        const Status status = cooler.control(control);
        if (status == emulator::Ok) {
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
    return emulator::lookUp(
        __func__, [&] { return Cooler::typeName(type); }, type);
}

int zvtGetSCTemperatures(uint64_t handle, float *frontPanel, float *airGap, float *internal)
{
    return onDevice<Temperatures>(
        __func__, handle, [&](Temperatures &t) { return t.sc(*frontPanel, *airGap, *internal); }, frontPanel, airGap,
        internal);
}

int zvtGetRSTemperatures(uint64_t handle, float *internal)
{
    return onDevice<Temperatures>(
        __func__, handle, [&](Temperatures &t) { return t.rs(*internal); }, internal);
}

int zvtGetHasLensTemperature(uint64_t handle, uint8_t *has)
{
    return onDevice<Temperatures>(
        __func__, handle, [&](Temperatures &t) { *has = t.hasLens(); }, has);
}

int zvtGetLensTemperature(uint64_t handle, float *temperature)
{
    return onDevice<Temperatures>(
        __func__, handle, [&](Temperatures &t) { return t.lens(*temperature); }, temperature);
}
