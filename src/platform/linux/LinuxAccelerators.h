#pragma once

#include "DevicePower.h"
#include "KeptFile.h"
#include "NvidiaLibrary.h"

#include <QList>
#include <QVariantMap>

#include <mutex>
#include <vector>

namespace tarnwick {

/// The graphics cards whose drivers tell their utilisation: the kernel's (`gpu_busy_percent`), by card number, then
/// those of NVIDIA's driver. Reading never wakes a card that sleeps, and lets one that idles and may sleep fall asleep:
/// it is left alone for a while. Any thread.
class LinuxAccelerators {
public:
    /// `root` is the folder that holds sys, ending in "/".
    LinuxAccelerators(const QString& root, const QString& nvidiaLibrary);

    /// One property dictionary per card; a card that sleeps or does not answer tells no utilisation.
    [[nodiscard]] QList<QVariantMap> read();

private:
    struct Card {
        QByteArray pciAddress; ///< of a card that NVIDIA's library answers for; else empty
        KeptFile busyPercent;  ///< of any other
        DevicePower power;
    };

    void scan();
    [[nodiscard]] std::optional<qint64> utilisation(Card& card);

    const QString root_; ///< ends in "/"
    std::mutex mutex_;
    std::vector<Card> cards_;
    NvidiaLibrary nvidia_;
    int readsUntilScan_ = 0;
};

} // namespace tarnwick
