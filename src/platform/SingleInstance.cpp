#include "SingleInstance.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

void makePrivateFolder(const QString& folder) {
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

/// Opens the named pipe at this path, and creates it when it is missing; -1 when that fails or the path is something
/// else. It is opened for both directions, so it neither blocks nor reaches an end of file.
int openPipe(const QByteArray& path) {
    if (::mkfifo(path.constData(), S_IRUSR | S_IWUSR) != 0 && errno != EEXIST)
        return -1;
    const int pipe = ::open(path.constData(), O_RDWR | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    struct stat status {};
    if (pipe >= 0 && (::fstat(pipe, &status) != 0 || !S_ISFIFO(status.st_mode))) {
        ::close(pipe);
        return -1;
    }
    return pipe;
}

} // namespace

SingleInstance::SingleInstance(const QString& folder, QObject* parent) : QObject(parent) {
    makePrivateFolder(folder);
    pipe_ = openPipe(QFile::encodeName(QDir(folder).filePath(u"instance"_s)));
    if (pipe_ < 0)
        return;
    // The pipe itself is locked, and is never removed: a process that opened it before would hold a lock that no other
    // one can see. The kernel frees the lock when its holder ends; a file with a process number would outlive a crash.
    if (::flock(pipe_, LOCK_EX | LOCK_NB) == 0)
        watch();
    else
        first_ = errno != EWOULDBLOCK;
}

SingleInstance::~SingleInstance() {
    delete notifier_;
    if (pipe_ >= 0)
        ::close(pipe_);
}

bool SingleInstance::requestActivation() {
    return !first_ && ::write(pipe_, "", 1) == 1;
}

void SingleInstance::watch() {
    notifier_ = new QSocketNotifier(pipe_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        std::array<char, 256> bytes{};
        while (::read(pipe_, bytes.data(), bytes.size()) > 0) {
        }
        Q_EMIT activationRequested();
    });
}

} // namespace tarnwick
