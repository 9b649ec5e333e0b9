#include "LinuxWords.h"

namespace tarnwick {

const SystemWords& systemWords() {
    return linuxWords;
}

} // namespace tarnwick
