#include "DevicePower.h"

#include "KernelFiles.h"

#include <QFileInfo>

#include <algorithm>
#include <array>
#include <initializer_list>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::chrono::seconds restingTime{15}; // amdgpu waits for 5 s before it lets a card sleep

/// A graphics card other than the one that the firmware starts with, which drives the screen and stays awake. Only
/// cards of class 0x0300 have the file boot_vga; the second card of a laptop is often a 3D controller (0x0302) or
/// another display controller (0x0380).
bool isSecondCard(const QString& deviceFolder) {
    return readSmallFile(deviceFolder + u"class"_s).startsWith("0x03") &&
           readSmallFile(deviceFolder + u"boot_vga"_s) != "1";
}

bool says(const KeptFile& file, std::initializer_list<QByteArrayView> words) {
    std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    return file.isOpen() && std::ranges::find(words, file.read(buffer).text) != words.end();
}

} // namespace

DevicePower::DevicePower(const QString& deviceFolder) : status_(deviceFolder + u"power/runtime_status"_s) {
    if (isSecondCard(deviceFolder))
        control_ = KeptFile(deviceFolder + u"power/control"_s);
}

bool DevicePower::isAsleep() const {
    return says(status_, {"suspended", "suspending"});
}

bool DevicePower::isGone() const {
    std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    return status_.isOpen() && status_.read(buffer).gone;
}

unsigned DevicePower::round(std::chrono::nanoseconds now) {
    // Asked each time: power-saving tools allow sleep and forbid it as a laptop is unplugged and plugged in.
    const bool maySleep = says(control_, {"auto"});
    const std::lock_guard lock(mutex_);
    if (!maySleep || now >= restsUntil_)
        ++round_;
    return round_;
}

unsigned DevicePower::noteRead(std::chrono::nanoseconds now, bool isBusy) {
    const std::lock_guard lock(mutex_);
    restsUntil_ = now + restingTime;
    return isBusy ? round_++ : round_;
}

std::shared_ptr<DevicePower> DevicePowers::of(const QString& deviceFolder) {
    const QString path = QFileInfo(deviceFolder).canonicalFilePath();
    if (path.isEmpty())
        return std::make_shared<DevicePower>(deviceFolder);
    const std::lock_guard lock(mutex_);
    std::weak_ptr<DevicePower>& known = known_[path];
    std::shared_ptr<DevicePower> power = known.lock();
    if (!power || power->isGone())
        known = power = std::make_shared<DevicePower>(deviceFolder);
    return power;
}

} // namespace tarnwick
