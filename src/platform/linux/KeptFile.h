#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <span>

namespace tarnwick {

/// A small file of /proc or /sys that stays open, so that each reading costs one system call and no path walk. read()
/// may be called from any thread.
class KeptFile {
public:
    KeptFile() = default;
    explicit KeptFile(const QString& path);
    KeptFile(KeptFile&& other) noexcept;
    KeptFile& operator=(KeptFile&& other) noexcept;
    ~KeptFile();

    struct Content {
        QByteArrayView text; ///< within the buffer, without white space around it; empty when nothing could be read
        bool gone = false;   ///< the device behind the file is no longer there

        /// The text as a number; absent when it is none.
        [[nodiscard]] std::optional<qint64> number() const;
    };

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    /// The beginning of the file as it is now, as much as fits into the buffer.
    [[nodiscard]] Content read(std::span<char> buffer) const;
    /// The content as a number; absent when it is none.
    [[nodiscard]] std::optional<qint64> readNumber() const;

private:
    int descriptor_ = -1;
};

} // namespace tarnwick
