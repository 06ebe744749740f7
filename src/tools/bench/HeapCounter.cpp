// Counts the bytes this process holds on the heap through operator new, block by block as the
// allocator sizes them, so that memory figures need not trust the allocator's own statistics
// (which count large mapped blocks apart, and not the same way on every system).

#include "tools/bench/BenchQuillet.hpp"

#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::uint64_t> heapInUse{0};

} // namespace

void* operator new(std::size_t size) {
    void* block = std::malloc(size == 0 ? 1 : size);
    if (!block) {
        throw std::bad_alloc();
    }
    heapInUse.fetch_add(malloc_usable_size(block), std::memory_order_relaxed);
    return block;
}

void operator delete(void* block) noexcept {
    if (block) {
        heapInUse.fetch_sub(malloc_usable_size(block), std::memory_order_relaxed);
        std::free(block);
    }
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

namespace quillet::bench {

std::uint64_t heapBytesInUse() {
    return heapInUse.load(std::memory_order_relaxed);
}

std::uint64_t recordedInputBytes(const sim::SimulatedInput& input) {
    const auto block = [](const void* data) {
        return data ? malloc_usable_size(const_cast<void*>(data)) : 0;
    };
    std::uint64_t bytes =
        block(input.events().data()) + block(input.pauses().data()) + block(input.warps().data());
    for (const auto& posted : input.events()) {
        bytes += block(posted.event.integerFields.data());
    }
    return bytes;
}

} // namespace quillet::bench
