#include "KeptFile.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace tarnwick {

KeptFile::KeptFile(const QString& path)
    : descriptor_(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}

KeptFile::KeptFile(KeptFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

KeptFile& KeptFile::operator=(KeptFile&& other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

KeptFile::~KeptFile() {
    if (isOpen())
        ::close(descriptor_);
}

KeptFile::Content KeptFile::read(std::span<char> buffer) const {
    ssize_t length = -1;
    do {
        length = ::pread(descriptor_, buffer.data(), buffer.size(), 0);
    } while (length < 0 && errno == EINTR);
    if (length < 0) {
        // A sensor that has no reading now (EIO, ENODATA, EAGAIN) is still there.
        return {.text = {}, .gone = errno == ENODEV || errno == ENXIO || errno == ENOENT || errno == EBADF};
    }
    return {.text = QByteArrayView(buffer.data(), length).trimmed(), .gone = length == 0};
}

std::optional<qint64> KeptFile::Content::number() const {
    bool isNumber = false;
    const qint64 value = text.toLongLong(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<qint64> KeptFile::readNumber() const {
    std::array<char, 32> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by the read
    return read(buffer).number();
}

} // namespace tarnwick
