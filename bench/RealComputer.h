#pragma once

#include "ThisComputer.h"
#include "linux/LinuxKernelReadings.h"
#include "linux/LinuxTemperatureSensors.h"

#include <thread>
#include <utility>

/// The computer that the benchmark runs on, with the temperature sensors below `sensorRoot`, and what the kernel says
/// otherwise below `kernelRoot`. A sensor or a thermal zone that shows `slowValue` takes 200 ms to say so.
struct RealComputer {
    explicit RealComputer(tarnwick::ThisComputer::Clock clock = tarnwick::ThisComputer::steadyTime,
                          const QString& sensorRoot = QStringLiteral("/"),
                          const QString& kernelRoot = QStringLiteral("/"))
        : kernel(kernelRoot, tarnwick::NvidiaLibrary::installedName(), {.clock = clock, .readInput = readInput})
        , sensors(sensorRoot, {.clock = clock, .readInput = readInput})
        , computer(kernel, sensors, tarnwick::systemWords(), std::move(clock)) {}

    static constexpr const char* slowValue = "61234";

    tarnwick::LinuxKernelReadings kernel;
    tarnwick::LinuxTemperatureSensors sensors;
    tarnwick::ThisComputer computer;

private:
    static tarnwick::KeptFile::Content readInput(const tarnwick::KeptFile& input, std::span<char> buffer) {
        const tarnwick::KeptFile::Content content = input.read(buffer);
        if (content.text == slowValue)
            std::this_thread::sleep_for(std::chrono::milliseconds(200));
        return content;
    }
};

/// A clock that moves on by a second at each question, so that every figure is read each time.
[[nodiscard]] inline tarnwick::ThisComputer::Clock hurriedTime() {
    return [now = std::chrono::nanoseconds()]() mutable {
        return now += std::chrono::seconds(1);
    };
}
