#include "LocalShell.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

QString LocalShell::preamble() {
    return uR"sh(sysctl() {
    command sysctl "$@" 2>/dev/null || awk '{ print "{ " $1 " " $2 " " $3 " }" }' /proc/loadavg
}
)sh"_s;
}

} // namespace tarnwick
