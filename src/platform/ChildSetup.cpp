#include "ChildSetup.h"

#include "ChildSystem.h"

#include <csignal>
#include <optional>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tarnwick::ChildSetup {

namespace {

std::optional<rlimit> original;

/// A thousand clients that start at once must not make the desktop, nor our own main thread, wait for the processor.
constexpr int childNiceness = 10;

} // namespace

void raiseOpenFileLimit() {
    rlimit limit{};
    if (original || ::getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return;
    const rlimit before = limit;
    limit.rlim_cur = ChildSystem::mostOpenFiles(limit.rlim_max);
    if (::setrlimit(RLIMIT_NOFILE, &limit) == 0)
        original = before;
}

rlim_t openFileLimit() {
    rlimit limit{};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return original.value_or(limit).rlim_cur;
}

void enter() {
    // Whoever starts this program in a terminal is not asked for a password there. Not by setsid(): the kernel may
    // share the processor among sessions, and then the niceness counts for nothing.
    if (const int terminal = ::open("/dev/tty", O_RDWR | O_CLOEXEC); terminal >= 0)
        ::ioctl(terminal, TIOCNOTTY);
    ::setpgid(0, 0);
    ::setpriority(PRIO_PROCESS, 0, childNiceness);
    if (original)
        ::setrlimit(RLIMIT_NOFILE, &*original);
    // Libraries, or the process that started this one, may have left files open; a child that outlives us must not keep
    // them open.
    ChildSystem::enter();
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

} // namespace tarnwick::ChildSetup
