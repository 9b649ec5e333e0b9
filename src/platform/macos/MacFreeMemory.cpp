#include "FreeMemory.h"

#include <malloc/malloc.h>

namespace tarnwick {

void shareHeaps() {} // all threads do already

void returnFreeMemory() {
    ::malloc_zone_pressure_relief(nullptr, 0); // all zones, as much as there is
}

} // namespace tarnwick
