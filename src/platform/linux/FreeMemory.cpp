#include "FreeMemory.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <system_error>
#include <thread>

#include <malloc.h>

namespace tarnwick {

namespace {

/// The allocator keeps this many freed blocks of each size in each thread. Each of them keeps its page from going back
/// to the system; after a popover was open, these pages are 1.5 MB.
constexpr std::size_t keptBlocks = 7;
constexpr std::size_t smallestKept = 24;
constexpr std::size_t largestKept = 1032;
constexpr std::size_t keptStep = 16;
constexpr std::size_t keptSizes = (largestKept - smallestKept) / keptStep + 1;

/// Takes the blocks that this thread keeps, and frees them in another thread, which keeps nothing once it has ended.
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
        freeAll(); // without another thread this one keeps them again
    }
}

} // namespace

void shareHeaps() {
    // Two, because with one the main thread would wait for the thread that loads views, and for the one that reads what
    // processes print.
    ::mallopt(M_ARENA_MAX, 2);
}

void returnFreeMemory() {
    emptyThreadCache();
    ::malloc_trim(0);
}

} // namespace tarnwick
