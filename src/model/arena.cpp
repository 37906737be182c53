#include "model/arena.hpp"

#include <sys/mman.h>

#include <algorithm>

#include "frontend/keywords.hpp"

namespace edd {

namespace {

// Chunks double from 64 KiB up to this size and stay there, so that a small description
// takes little memory and the tail left unused in a large one stays small.
constexpr std::size_t largest_chunk = std::size_t{4} << 20;
constexpr std::size_t huge_page = std::size_t{2} << 20;

// Chunks of whole huge pages are mapped on huge-page boundaries and offered huge pages:
// a page fault for every 4 KiB of a large description costs more than building it.
bool is_mapped(std::size_t size) { return size % huge_page == 0; }

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

}  // namespace

std::string_view copy_word(std::pmr::memory_resource& resource, std::string_view text) {
    const std::string_view spelling = keyword_spelling(text);
    return spelling.empty() ? copy_text(resource, text) : spelling;
}

Arena::~Arena() {
    for (const Chunk& chunk : chunks_) free_chunk(chunk.memory, chunk.size);
}

void* Arena::take_new_chunk(std::size_t bytes, std::size_t alignment) {
    // A request larger than a quarter chunk gets a chunk of its own; the current one goes on.
    const std::size_t needed = bytes + alignment;
    if (needed > largest_chunk / 4) {
        void* memory = allocate_chunk(needed);
        chunks_.push_back({memory, needed});
        const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(memory);
        return reinterpret_cast<void*>((start + alignment - 1) & ~(alignment - 1));
    }
    const std::size_t size = next_chunk_size_;
    next_chunk_size_ = std::min(2 * next_chunk_size_, largest_chunk);
    void* memory = allocate_chunk(size);
    chunks_.push_back({memory, size});
    next_ = reinterpret_cast<std::uintptr_t>(memory);
    end_ = next_ + size;
    return take(bytes, alignment);
}

}  // namespace edd
