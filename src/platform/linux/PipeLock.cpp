#include "PipeLock.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace tarnwick::PipeLock {

namespace {

/// `type`: F_WRLCK or F_UNLCK.
bool set(int pipe, int byte, short type) {
    struct flock range {};
    range.l_type = type;
    range.l_whence = SEEK_SET;
    range.l_start = byte;
    range.l_len = 1;
    return ::fcntl(pipe, F_OFD_SETLK, &range) == 0;
}

} // namespace

Outcome take(int pipe, int byte) {
    if (set(pipe, byte, F_WRLCK))
        return Outcome::done;
    return errno == EAGAIN || errno == EACCES ? Outcome::heldByOther : Outcome::impossible;
}

void release(int pipe, int byte) {
    set(pipe, byte, F_UNLCK);
}

} // namespace tarnwick::PipeLock
