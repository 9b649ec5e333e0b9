#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <map>

namespace tarnwick {

/// A home folder of its own for every process started while this object lives, so that a test neither reads nor
/// changes the user's. `HOME` alone would not do: ssh asks the password database, which is answered by libnss-wrapper.
/// Our own build under AddressSanitizer starts that way only with `verify_asan_link_order=0`.
class UserHome {
public:
    UserHome();
    ~UserHome();
    UserHome(const UserHome&) = delete;
    UserHome& operator=(const UserHome&) = delete;

    /// Empty when all is in place, else what is missing.
    [[nodiscard]] QString error() const { return error_; }
    [[nodiscard]] QString folder() const { return folder_.path(); }
    /// Writes `.ssh/NAME` in it.
    [[nodiscard]] bool writeSshFile(const QString& name, const QByteArray& contents) const;

private:
    void set(const char* variable, const QByteArray& value);

    QTemporaryDir folder_;
    QString error_;
    std::map<const char*, QByteArray> before_; ///< the variables' values to go back to; null: not set
};

} // namespace tarnwick
