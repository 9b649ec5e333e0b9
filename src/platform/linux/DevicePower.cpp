#include "DevicePower.h"

#include "KernelFiles.h"

#include <array>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr std::chrono::seconds restingTime{15}; // amdgpu waits for 5 s before it lets a card sleep

} // namespace

DevicePower::DevicePower(const QString& deviceFolder) {
    const QString status = deviceFolder + u"power/runtime_status"_s;
    if (readSmallFile(status) != "unsupported")
        status_ = KeptFile(status);
    // The card that the firmware starts with drives the screen and stays awake; only graphics cards have this file.
    isSecondCard_ = readSmallFile(deviceFolder + u"boot_vga"_s) == "0" &&
                    readSmallFile(deviceFolder + u"power/control"_s) == "auto";
}

bool DevicePower::isAsleep() const {
    if (!status_.isOpen())
        return false;
    std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    const QByteArrayView status = status_.read(buffer).text;
    return status == "suspended" || status == "suspending";
}

bool DevicePower::rest() {
    if (isSecondCard_)
        restsUntil_ = Clock::now() + restingTime;
    return isSecondCard_;
}

} // namespace tarnwick
