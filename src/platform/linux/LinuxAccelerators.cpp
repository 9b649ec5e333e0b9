#include "LinuxAccelerators.h"

#include "KernelFiles.h"

#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int readsPerScan = 60; // cards come and go with docks: about once a minute of label ticks

} // namespace

LinuxAccelerators::LinuxAccelerators(const QString& root, const QString& nvidiaLibrary)
    : root_(root), nvidia_(nvidiaLibrary) {}

QList<QVariantMap> LinuxAccelerators::read() {
    const std::lock_guard lock(mutex_);
    if (--readsUntilScan_ < 0)
        scan();
    QList<QVariantMap> properties;
    for (Card& card : cards_) {
        const std::optional<qint64> percent = utilisation(card);
        properties.append(
            percent ? QVariantMap{{u"PerformanceStatistics"_s, QVariantMap{{u"Device Utilization %"_s, *percent}}}}
                    : QVariantMap());
    }
    // A session keeps all of NVIDIA's cards awake.
    const auto needsSession = [](const Card& card) {
        return !card.pciAddress.isEmpty() && !card.power.isAsleep() && !card.power.isResting();
    };
    if (std::ranges::none_of(cards_, needsSession))
        nvidia_.close();
    return properties;
}

void LinuxAccelerators::scan() {
    readsUntilScan_ = readsPerScan;
    std::vector<Card> found;
    const QString drm = root_ + u"sys/class/drm/"_s;
    for (const QString& entry : foldersByNumber(drm, u"card*"_s)) {
        const QString device = drm + entry + u"/device/"_s;
        if (QFile::exists(device + u"gpu_busy_percent"_s)) { // connectors ("card0-DP-1") have none
            found.push_back({.pciAddress = {},
                             .busyPercent = KeptFile(device + u"gpu_busy_percent"_s),
                             .power = DevicePower(device)});
        }
    }
    const QString nvidia = root_ + u"sys/bus/pci/drivers/nvidia/"_s;
    for (const QString& address : foldersByNumber(nvidia, u"*:*:*.*"_s)) {
        found.push_back(
            {.pciAddress = address.toLatin1(), .busyPercent = {}, .power = DevicePower(nvidia + address + u'/')});
    }
    cards_ = std::move(found);
}

std::optional<qint64> LinuxAccelerators::utilisation(Card& card) {
    if (card.power.isAsleep())
        return std::nullopt;
    if (card.power.isResting())
        return 0;
    const std::optional<qint64> percent = card.pciAddress.isEmpty()
                                              ? card.busyPercent.readNumber()
                                              : std::optional<qint64>(nvidia_.utilisation(card.pciAddress));
    if (percent == 0)
        card.power.rest();
    return percent;
}

} // namespace tarnwick
