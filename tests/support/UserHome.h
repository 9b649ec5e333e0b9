#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <map>

namespace tarnwick {

/// Gives every process started while this object lives a temporary home folder, so that a test neither reads nor
/// changes the user's. Setting `HOME` is not enough: ssh asks the password database, so libnss-wrapper answers for
/// that. A build with AddressSanitizer starts under libnss-wrapper only with `verify_asan_link_order=0`.
class UserHome {
public:
    UserHome();
    ~UserHome();
    UserHome(const UserHome&) = delete;
    UserHome& operator=(const UserHome&) = delete;

    /// What is missing; empty when nothing is.
    [[nodiscard]] QString error() const { return error_; }
    [[nodiscard]] QString folder() const { return folder_.path(); }
    /// Writes `.ssh/NAME` in it.
    [[nodiscard]] bool writeSshFile(const QString& name, const QByteArray& contents) const;

private:
    void set(const char* variable, const QByteArray& value);

    QTemporaryDir folder_;
    QString error_;
    std::map<const char*, QByteArray> before_; ///< the variables' values to restore; null: not set
};

} // namespace tarnwick
