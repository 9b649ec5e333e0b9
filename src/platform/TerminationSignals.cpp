#include "TerminationSignals.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>

#include <fcntl.h>
#include <sys/time.h>
#include <unistd.h>

namespace tarnwick {

namespace {

std::atomic<int> wakeUp{-1};
static_assert(std::atomic<int>::is_always_lock_free, "read by a signal handler");

constexpr timeval longestEnd{.tv_sec = 1, .tv_usec = 500'000};
std::atomic<int> endStatus{0};

void endAtOnce(int /*signalNumber*/) {
    ::_exit(endStatus);
}

/// Async-signal-safe. A timer and no thread, which might not be had when it is needed.
void startEndTimer() {
    itimerval timer{};
    if (::getitimer(ITIMER_REAL, &timer) == 0 && timerisset(&timer.it_value))
        return;
    struct sigaction action {};
    action.sa_handler = endAtOnce;
    ::sigaction(SIGALRM, &action, nullptr);
    timer = {.it_interval = {}, .it_value = longestEnd};
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

void wakeEventLoop(int /*signalNumber*/) {
    const int before = errno;
    startEndTimer();
    // When the pipe is full, the loop has been woken already.
    [[maybe_unused]] const ssize_t written = ::write(wakeUp, "", 1);
    errno = before;
}

} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent) {
    ::signal(SIGPIPE, SIG_IGN);
    if (::pipe(pipe_.data()) != 0)
        return; // without a pipe the signals end the program as by default
    for (const int end : pipe_) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    notifier_ = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &TerminationSignals::drain);
    wakeUp = pipe_[1];

    struct sigaction action {};
    action.sa_handler = wakeEventLoop;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        ::sigaction(numbers[i], nullptr, &before_[i]);
        if (before_[i].sa_handler != SIG_IGN)
            ::sigaction(numbers[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
    if (!notifier_)
        return;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        ::sigaction(numbers[i], &before_[i], nullptr);
    wakeUp = -1;
    delete notifier_;
    ::close(pipe_[0]);
    ::close(pipe_[1]);
    const itimerval off{};
    ::setitimer(ITIMER_REAL, &off, nullptr);
}

void TerminationSignals::limitEnd(int status) {
    endStatus = status;
    startEndTimer();
}

void TerminationSignals::drain() {
    std::array<char, 256> bytes{};
    while (::read(pipe_[0], bytes.data(), bytes.size()) > 0) {
    }
    Q_EMIT terminationRequested();
}

} // namespace tarnwick
