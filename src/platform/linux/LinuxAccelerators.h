#pragma once

#include "DevicePower.h"
#include "KeptFile.h"
#include "NvidiaLibrary.h"

#include <QList>
#include <QVariantMap>

#include <mutex>
#include <vector>

namespace tarnwick {

/// The graphics cards whose drivers report their utilisation: those of the kernel's drivers (`gpu_busy_percent`), by
/// card number, then those of NVIDIA's driver. Reading never wakes a card that sleeps; a card that idles and is allowed
/// to sleep is left alone for a while, so that it can. Any thread.
class LinuxAccelerators {
public:
    /// `root` is the folder that holds sys, ending in "/".
    LinuxAccelerators(const QString& root, const QString& nvidiaLibrary);

    /// One property dictionary per card; a card that sleeps or does not answer has no utilisation.
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
