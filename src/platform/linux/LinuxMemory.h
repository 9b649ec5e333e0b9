#pragma once

#include "KeptFile.h"

#include <QString>

#include <optional>

namespace tarnwick {

/// How much memory there is and how much of it programs could still get, in KiB.
struct LinuxMemory {
    quint64 installed = 0;
    quint64 available = 0; ///< never more than is installed
};

/// Any thread.
class LinuxMemoryReading {
public:
    /// `root` is the folder that holds proc and sys, ending in "/".
    explicit LinuxMemoryReading(const QString& root);

    /// Absent when the kernel publishes no total, or one that no computer has.
    [[nodiscard]] std::optional<LinuxMemory> read() const;

private:
    const QString root_;
    const KeptFile memory_;
    const quint64 onlineKiB_; ///< all memory modules together; 0 when the kernel does not publish it
};

} // namespace tarnwick
