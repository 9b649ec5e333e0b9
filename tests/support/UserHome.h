#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace tarnwick {

/// Gives every process started from now on a temporary home folder, which this object removes at its end, so that a
/// test neither reads nor changes the user's. Setting `HOME` is not enough: ssh asks the password database, so
/// libnss-wrapper answers for that. A build with AddressSanitizer starts under libnss-wrapper only with
/// `verify_asan_link_order=0`.
class UserHome {
public:
    UserHome();

    /// What is missing; empty when nothing is.
    [[nodiscard]] QString error() const { return error_; }
    [[nodiscard]] QString folder() const { return folder_.path(); }
    /// Writes `.ssh/NAME` in it.
    [[nodiscard]] bool writeSshFile(const QString& name, const QByteArray& contents) const;

private:
    QTemporaryDir folder_;
    QString error_;
};

} // namespace tarnwick
