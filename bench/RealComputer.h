#pragma once

#include "ThisComputer.h"
#include "linux/LinuxKernelReadings.h"
#include "linux/LinuxTemperatureSensors.h"

#include <utility>

/// The computer that the benchmark runs on, with the temperature sensors below `sensorRoot`.
struct RealComputer {
    explicit RealComputer(tarnwick::ThisComputer::Clock clock = tarnwick::ThisComputer::steadyTime,
                          const QString& sensorRoot = QStringLiteral("/"))
        : sensors(sensorRoot), computer(kernel, sensors, std::move(clock)) {}

    tarnwick::LinuxKernelReadings kernel;
    tarnwick::LinuxTemperatureSensors sensors;
    tarnwick::ThisComputer computer;
};

/// A clock that moves on by a second at each question, so that every figure is read each time.
[[nodiscard]] inline tarnwick::ThisComputer::Clock hurriedTime() {
    return [now = std::chrono::nanoseconds()]() mutable {
        return now += std::chrono::seconds(1);
    };
}
