#include "LinuxAccelerators.h"

#include "KernelFiles.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <utility>

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

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

std::optional<qint64> rounded(std::optional<double> number) {
    return number ? std::optional<qint64>(std::llround(*number)) : std::nullopt;
}

} // namespace

LinuxAccelerators::LinuxAccelerators(const QString& root, const QString& nvidiaLibrary, const DeviceAccess& access)
    : root_(root), access_(access), nvidia_(nvidiaLibrary) {}

QList<QVariantMap> LinuxAccelerators::read() {
    const std::lock_guard lock(mutex_);
    if (--readsUntilScan_ < 0)
        scan();
    const std::chrono::nanoseconds now = access_.clock();
    std::vector<std::optional<qint64>> percentages;
    for (Card& card : cards_)
        percentages.push_back(utilisation(card, now));
    std::ranges::sort(percentages, std::greater());
    // A session keeps all of NVIDIA's cards awake.
    const auto needsSession = [now](const Card& card) {
        return !card.pciAddress.isEmpty() && !card.turns.isAsleep() && card.turns.isDue(now);
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
    std::vector<Card> before = std::exchange(cards_, {});
    const auto addCard = [&](const QString& device) -> Card& {
        Card& card = cards_.emplace_back();
        card.device = device;
        card.turns = DeviceTurns(access_.powers->of(device));
        // One that rests goes on resting.
        const auto known = std::ranges::find(before, device, &Card::device);
        if (known != before.end()) {
            card.turns.continueFrom(known->turns);
            card.reported = known->reported;
            card.hasRested = known->hasRested;
        }
        return card;
    };
    const auto addCardWithPercent = [&addCard](const QString& path, const QString& device) {
        if (KeptFile file(path); file.isOpen())
            addCard(device).busyPercent = std::move(file);
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
        if (KeptFile queues(device + u"gpu_stats"_s); queues.isOpen()) {
            Card& added = addCard(device);
            added.queues = std::move(queues);
            added.turns = {}; // the driver counts for itself, so that a question wakes nothing
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

std::optional<qint64> LinuxAccelerators::utilisation(Card& card, std::chrono::nanoseconds now) {
    const bool isAsleep = card.turns.isAsleep();
    if (isAsleep || !card.turns.isDue(now)) {
        // Its counters stand still while a card sleeps, so no interval may include that time.
        for (const IdleCounter& counter : card.idleCounters)
            residencies_.remove(counter.path);
        card.hasRested = true;
        if (isAsleep)
            card.reported.reset();
        return card.reported;
    }
    std::optional<qint64> percent = measure(card, now);
    if (percent && (*percent < 0 || *percent > 100))
        percent.reset();
    if (percent)
        card.turns.noteRead(now, *percent > 0);
    // After a rest an interval has to begin first.
    if (!std::exchange(card.hasRested, false) || percent)
        card.reported = percent;
    return card.reported;
}

std::optional<qint64> LinuxAccelerators::measure(const Card& card, std::chrono::nanoseconds now) {
    if (!card.pciAddress.isEmpty())
        return nvidia_.utilisation(card.pciAddress);
    if (card.queues.isOpen())
        return busiestQueue(card);
    if (!card.busyPercent.isOpen())
        return busiestPart(card, now);
    std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    KeptFile::Content content = card.busyPercent.read(buffer);
    if (const qsizetype at = content.text.indexOf('@'); at >= 0)
        content.text.truncate(at);
    return content.number();
}

std::optional<qint64> LinuxAccelerators::busiestPart(const Card& card, std::chrono::nanoseconds now) {
    std::optional<qint64> busiest;
    for (const IdleCounter& counter : card.idleCounters)
        if (const std::optional<qint64> idle = counter.file.readNumber())
            busiest = std::max(busiest, rounded(residencies_[counter.path].busyPercent(milliseconds(*idle), now)));
    return busiest;
}

std::optional<qint64> LinuxAccelerators::busiestQueue(const Card& card) {
    std::array<char, 1024> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    std::optional<qint64> busiest;
    for (const QByteArray& line : card.queues.read(buffer).text.toByteArray().split('\n')) {
        const QByteArrayList columns = line.split('\t');
        if (columns.size() != 4)
            continue;
        const IdleResidency::Time now(columns[1].toLongLong()); // 0 in the line with the columns' names
        const IdleResidency::Time withWork(columns[3].toLongLong());
        IdleResidency& residency = residencies_[card.device + QString::fromLatin1(columns[0])];
        busiest = std::max(busiest, rounded(residency.busyPercent(now - withWork, now)));
    }
    return busiest;
}

} // namespace tarnwick
