// SPDX-License-Identifier: Apache-2.0
// Arena chunks on POSIX: mapped memory, on huge pages where the system offers them.
#include <sys/mman.h>

#include <cstdint>
#include <new>

#include "model/arena_chunks.hpp"

namespace edd {

namespace {

constexpr std::size_t huge_page = std::size_t{2} << 20;

// Chunks of whole huge pages are mapped on huge-page boundaries and offered huge pages:
// a page fault for every 4 KiB of a large description costs more than building it.
bool is_mapped(std::size_t size) { return size % huge_page == 0; }

}  // namespace

void* allocate_chunk(std::size_t size) {
    if (!is_mapped(size)) return ::operator new(size);
    void* mapped = mmap(nullptr, size + huge_page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) throw std::bad_alloc();
    const auto start = reinterpret_cast<std::uintptr_t>(mapped);
    const std::uintptr_t aligned = (start + huge_page - 1) & ~(huge_page - 1);
    // The mapping is one huge page longer than the chunk: what lies before and after the
    // aligned chunk goes back (the part after is never empty).
    if (aligned > start) munmap(mapped, aligned - start);
    munmap(reinterpret_cast<void*>(aligned + size), start + huge_page - aligned);
#ifdef MADV_HUGEPAGE
    madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);  // advice only
#endif
    return reinterpret_cast<void*>(aligned);
}

void free_chunk(void* memory, std::size_t size) {
    if (!is_mapped(size)) ::operator delete(memory);
    else munmap(memory, size);
}

}  // namespace edd
