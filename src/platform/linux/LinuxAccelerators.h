#pragma once

#include "DeviceAccess.h"
#include "IdleResidency.h"
#include "KeptFile.h"
#include "NvidiaLibrary.h"

#include <QHash>
#include <QList>
#include <QVariantMap>

#include <mutex>
#include <vector>

namespace tarnwick {

/// The graphics processors whose drivers report how busy they are: AMD's in percent, Intel's as the time for which each
/// of their parts was idle, Broadcom's (of the Raspberry Pi 4 and 5) as the time for which each of their queues had
/// work, Rockchip's as the load that sets their frequency, NVIDIA's through its library. Reading never wakes a card
/// that sleeps; a card that idles and is allowed to sleep is left alone for a while, so that it can. Any thread.
class LinuxAccelerators {
public:
    /// `root` is the folder that holds sys, ending in "/".
    LinuxAccelerators(const QString& root, const QString& nvidiaLibrary, const DeviceAccess& access);

    /// One property dictionary per card, the busiest first. A card that sleeps or does not answer has no utilisation;
    /// Intel's and Broadcom's have none at the first read, because there is no interval yet. It is 0 to 100; what a
    /// driver says beyond is no reading.
    [[nodiscard]] QList<QVariantMap> read();

private:
    struct IdleCounter {
        QString path;
        KeptFile file; ///< milliseconds
    };
    /// One of the sources of its utilisation is there, the others are empty or not open.
    struct Card {
        QString device;        ///< its folder in /sys, ending in "/"
        QByteArray pciAddress; ///< of a card that NVIDIA's library answers for
        KeptFile busyPercent;  ///< "12", or "12@200000000Hz"
        std::vector<IdleCounter> idleCounters;
        KeptFile queues; ///< a line for each: its name, nanoseconds, jobs done, nanoseconds with work
        DeviceTurns turns;
        std::optional<qint64> reported;
        bool hasRested = false; ///< since it was measured
    };

    void scan();
    [[nodiscard]] std::optional<qint64> utilisation(Card& card, std::chrono::nanoseconds now);
    [[nodiscard]] std::optional<qint64> measure(const Card& card, std::chrono::nanoseconds now);
    [[nodiscard]] std::optional<qint64> busiestPart(const Card& card, std::chrono::nanoseconds now);
    [[nodiscard]] std::optional<qint64> busiestQueue(const Card& card);

    const QString root_; ///< ends in "/"
    const DeviceAccess access_;
    std::mutex mutex_; ///< guards what follows
    std::vector<Card> cards_;
    QHash<QString, IdleResidency> residencies_; ///< by the counter's path, so that a scan keeps them
    NvidiaLibrary nvidia_;
    int readsUntilScan_ = 0;
};

} // namespace tarnwick
