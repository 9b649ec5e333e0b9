#include "LinuxAccelerators.h"

#include "KernelFiles.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int readsPerScan = 60; // cards come and go with docks: about once a minute of label ticks

/// The idle counters of an Intel card. Its i915 and its xe driver have one for each part of the card; i915 before Linux
/// 5.18 has one for the whole card. `card` ends in "/".
QStringList idleCounterPaths(const QString& card) {
    QStringList paths;
    const auto append = [&paths](const QString& path) {
        if (QFile::exists(path))
            paths.append(path);
    };
    for (const QString& part : foldersByNumber(card + u"gt"_s, u"gt*"_s))
        append(card + u"gt/%1/rc6_residency_ms"_s.arg(part));
    for (const QString& tile : foldersByNumber(card + u"device"_s, u"tile*"_s))
        for (const QString& part : foldersByNumber(card + u"device/"_s + tile, u"gt*"_s))
            append(card + u"device/%1/%2/gtidle/idle_residency_ms"_s.arg(tile, part));
    if (paths.isEmpty())
        append(card + u"power/rc6_residency_ms"_s);
    return paths;
}

} // namespace

LinuxAccelerators::LinuxAccelerators(const QString& root, const QString& nvidiaLibrary)
    : root_(root), nvidia_(nvidiaLibrary) {}

QList<QVariantMap> LinuxAccelerators::read() {
    const std::lock_guard lock(mutex_);
    if (--readsUntilScan_ < 0)
        scan();
    std::vector<std::optional<qint64>> percentages;
    for (Card& card : cards_)
        percentages.push_back(utilisation(card));
    std::ranges::sort(percentages, std::greater());
    // A session keeps all of NVIDIA's cards awake.
    const auto needsSession = [](const Card& card) {
        return !card.pciAddress.isEmpty() && !card.power.isAsleep() && !card.power.isResting();
    };
    if (std::ranges::none_of(cards_, needsSession))
        nvidia_.close();

    QList<QVariantMap> properties;
    for (const std::optional<qint64>& percent : percentages) {
        properties.append(
            percent ? QVariantMap{{u"PerformanceStatistics"_s, QVariantMap{{u"Device Utilization %"_s, *percent}}}}
                    : QVariantMap());
    }
    return properties;
}

void LinuxAccelerators::scan() {
    readsUntilScan_ = readsPerScan;
    cards_.clear();
    const auto addCard = [this](const QString& device) -> Card& {
        Card& card = cards_.emplace_back();
        card.power = DevicePower(device);
        return card;
    };
    const auto addCardWithPercent = [&addCard](const QString& file, const QString& device) {
        if (QFile::exists(file))
            addCard(device).busyPercent = KeptFile(file);
    };
    const QString drm = root_ + u"sys/class/drm/"_s;
    for (const QString& entry : foldersByNumber(drm, u"card*"_s)) { // connectors ("card0-DP-1") have none of the files
        const QString card = drm + entry + u'/';
        const QString device = card + u"device/"_s;
        addCardWithPercent(device + u"gpu_busy_percent"_s, device);
        if (const QStringList counters = idleCounterPaths(card); !counters.isEmpty()) {
            Card& added = addCard(device);
            for (const QString& path : counters)
                added.idleCounters.push_back({.path = path, .file = KeptFile(path)});
        }
    }
    // Only Rockchip's own kernels have the file "load": for "fb000000.gpu", but also for memory and neural processors.
    const QString devfreq = root_ + u"sys/class/devfreq/"_s;
    for (const QString& entry : foldersByNumber(devfreq, u"*gpu*"_s))
        addCardWithPercent(devfreq + entry + u"/load"_s, devfreq + entry + u"/device/"_s);
    const QString nvidia = root_ + u"sys/bus/pci/drivers/nvidia/"_s;
    for (const QString& address : foldersByNumber(nvidia, u"*:*:*.*"_s))
        addCard(nvidia + address + u'/').pciAddress = address.toLatin1();
}

std::optional<qint64> LinuxAccelerators::utilisation(Card& card) {
    const bool isAsleep = card.power.isAsleep();
    if (isAsleep || card.power.isResting()) {
        // Its counters stand still while a card sleeps, so no interval may include that time.
        for (const IdleCounter& counter : card.idleCounters)
            residencies_.remove(counter.path);
        return isAsleep ? std::nullopt : std::optional<qint64>(0);
    }
    const std::optional<qint64> percent = measure(card);
    if (percent == 0)
        card.power.rest();
    return percent;
}

std::optional<qint64> LinuxAccelerators::measure(const Card& card) {
    if (!card.pciAddress.isEmpty())
        return nvidia_.utilisation(card.pciAddress);
    if (card.busyPercent.isOpen()) {
        std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
        KeptFile::Content content = card.busyPercent.read(buffer);
        if (const qsizetype at = content.text.indexOf('@'); at >= 0)
            content.text.truncate(at);
        return content.number();
    }
    std::optional<qint64> busiest;
    for (const IdleCounter& counter : card.idleCounters) {
        const std::optional<qint64> idle = counter.file.readNumber();
        if (!idle)
            continue;
        const std::optional<double> percent =
            residencies_[counter.path].busyPercent(std::chrono::milliseconds(*idle), IdleResidency::Clock::now());
        if (percent)
            busiest = std::max(busiest, std::optional<qint64>(std::llround(*percent)));
    }
    return busiest;
}

} // namespace tarnwick
