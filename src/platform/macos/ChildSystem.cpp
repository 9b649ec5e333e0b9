#include "ChildSystem.h"

#include <algorithm>

#include <fcntl.h>
#include <sys/syslimits.h>

namespace tarnwick::ChildSystem {

rlim_t mostOpenFiles(rlim_t hardLimit) {
    return std::min<rlim_t>(hardLimit, OPEN_MAX); // the hard limit may say "unlimited", which is refused
}

void enter() {
    for (int file = 3; file < OPEN_MAX; ++file)
        ::fcntl(file, F_SETFD, FD_CLOEXEC);
}

} // namespace tarnwick::ChildSystem
