#include "FreeMemory.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <malloc.h>

namespace tarnwick {

namespace {

/// The allocator keeps this many freed blocks of each size in each thread, wherever they lie: each keeps its page from
/// going back to the system, 1.5 MB of them after a popover was open.
constexpr std::size_t keptBlocks = 7;
constexpr std::size_t smallestKept = 24;
constexpr std::size_t largestKept = 1032;
constexpr std::size_t keptStep = 16;
constexpr std::size_t keptSizes = (largestKept - smallestKept) / keptStep + 1;

/// Takes what this thread keeps, and lets another thread free it, which keeps nothing once it has ended.
void emptyThreadCache() {
    std::array<void*, keptSizes * keptBlocks> blocks{};
    for (std::size_t i = 0; i < blocks.size(); ++i)
        blocks[i] = std::malloc(smallestKept + i / keptBlocks * keptStep); // NOLINT(cppcoreguidelines-no-malloc)
    const auto freeAll = [&blocks] {
        for (void* block : blocks)
            std::free(block); // NOLINT(cppcoreguidelines-no-malloc)
    };
    try {
        std::thread(freeAll).join();
    } catch (const std::system_error&) {
        freeAll(); // no thread to be had: they are kept again
    }
}

} // namespace

void shareHeaps() {
    // Not one: the main thread would wait for the loader of views, and for the one that reads what processes print.
    ::mallopt(M_ARENA_MAX, 2);
}

void returnFreeMemory() {
    emptyThreadCache();
    ::malloc_trim(0);
}

} // namespace tarnwick
