#include "SingleInstance.h"

#include "PipeLock.h"
#include "PrivateFolder.h"

#include <QDir>
#include <QFile>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <chrono>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

// The pipe itself is locked, and is never removed: a process that opened it before would hold a lock that no other one
// can see. The kernel frees the locks when their holder ends; a file with a process number would outlive a crash.
constexpr int leadByte = 0;    ///< locked by the leader
constexpr int desktopByte = 1; ///< locked by the process that shows windows

/// Opens the named pipe at this path, and creates it when it is missing; -1 when that fails, or the path is something
/// else or another user's. It is opened for both directions, so it neither blocks nor reaches an end of file.
int openPipe(const QByteArray& path) {
    if (::mkfifo(path.constData(), S_IRUSR | S_IWUSR) == 0)
        ::chmod(path.constData(), S_IRUSR | S_IWUSR); // the umask may have taken these
    else if (errno != EEXIST)
        return -1;
    const int pipe = ::open(path.constData(), O_RDWR | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    struct stat status {};
    if (pipe >= 0 && (::fstat(pipe, &status) != 0 || !S_ISFIFO(status.st_mode) || status.st_uid != ::geteuid() ||
                      ::fchmod(pipe, S_IRUSR | S_IWUSR) != 0)) {
        ::close(pipe);
        return -1;
    }
    return pipe;
}

bool drain(int pipe) {
    std::array<char, 256> bytes{};
    bool any = false;
    while (::read(pipe, bytes.data(), bytes.size()) > 0)
        any = true;
    return any;
}

} // namespace

SingleInstance::SingleInstance(const QString& folder, bool hasDisplay, QObject* parent)
    : QObject(parent), hasDisplay_(hasDisplay) {
    makePrivateFolder(folder);
    pipe_ = openPipe(QFile::encodeName(QDir(folder).filePath(u"instance"_s)));
    if (pipe_ < 0)
        return;
    isSurplus_ = hasDisplay && PipeLock::take(pipe_, desktopByte) == PipeLock::Outcome::heldByOther;
    if (isSurplus_) {
        role_ = Role::follower;
        return;
    }
    connect(&attempts_, &QTimer::timeout, this, &SingleInstance::tryToLead);
    tryToLead();
}

SingleInstance::~SingleInstance() {
    delete notifier_;
    if (pipe_ >= 0)
        ::close(pipe_);
}

bool SingleInstance::requestActivation() {
    return pipe_ >= 0 && role_ == Role::follower && ::write(pipe_, "", 1) == 1;
}

void SingleInstance::tryToLead() {
    switch (PipeLock::take(pipe_, leadByte)) {
    case PipeLock::Outcome::done:
        lead();
        return;
    case PipeLock::Outcome::impossible:
        setRole(Role::leader);
        return;
    case PipeLock::Outcome::heldByOther:
        break;
    }
    // A leader that does not answer is stopped or hangs. Once it runs again, it hands over all the same.
    const bool goesAhead = hasDisplay_ && answerBy_.hasExpired();
    setRole(goesAhead ? Role::leader : Role::follower);
    if (hasDisplay_) {
        // When the pipe is full, the leader has been asked.
        [[maybe_unused]] const ssize_t written = ::write(pipe_, "", 1);
    }
    attempts_.start(hasDisplay_ && !goesAhead ? 50ms : 1s);
}

void SingleInstance::lead() {
    attempts_.stop();
    drain(pipe_); // the requests were this process's own
    notifier_ = new QSocketNotifier(pipe_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &SingleInstance::hearRequest);
    setRole(Role::leader);
}

void SingleInstance::hearRequest() {
    if (!drain(pipe_))
        return;
    if (hasDisplay_) {
        Q_EMIT activationRequested();
        return;
    }
    notifier_->setEnabled(false);
    std::exchange(notifier_, nullptr)->deleteLater(); // this is its signal
    setRole(Role::follower);
    PipeLock::release(pipe_, leadByte);
    attempts_.start(1s); // long enough for whoever asked
}

void SingleInstance::setRole(Role role) {
    if (std::exchange(role_, role) != role)
        Q_EMIT roleChanged();
}

} // namespace tarnwick
