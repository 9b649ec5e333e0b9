#include "FreeMemory.h"

#include <malloc.h>

namespace tarnwick {

void returnFreeMemory() {
    ::malloc_trim(0);
}

} // namespace tarnwick
