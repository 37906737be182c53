// SPDX-License-Identifier: Apache-2.0
#include "files/source_text.hpp"

#include <algorithm>
#include <cstdint>
#include <mutex>

#include "files/platform.hpp"

namespace edd {

namespace {

constexpr std::size_t huge_page = std::size_t{2} << 20;
// Texts from this size on share chunks: below it, the faults of the pages a text takes
// from the heap cost less than clearing a huge page.
constexpr std::size_t large_text = std::size_t{64} << 10;
// Address space only: a page is taken when it is first written. Large enough that the
// sources and the model of a large description mostly share one.
constexpr std::size_t chunk_size = std::size_t{64} << 20;

}  // namespace

SourceText::SourceText(std::string text) {
    auto owned = std::make_shared<const std::string>(std::move(text));
    text_ = *owned;
    owner_ = std::move(owned);
}

namespace {

class Chunk {
public:
    explicit Chunk(std::size_t size) : bytes(static_cast<char*>(platform::allocate_chunk(size))), size(size) {}
    ~Chunk() { platform::free_chunk(bytes, size); }
    Chunk(const Chunk&) = delete;
    Chunk& operator=(const Chunk&) = delete;
    char* const bytes;
    const std::size_t size;
    std::size_t used = 0;
};

// The chunk room is taken from, while anything taken from it lives.
struct SharedRoom {
    std::mutex lock;
    std::weak_ptr<Chunk> current;
};

SharedRoom& shared_room() {
    static SharedRoom room;
    return room;
}

}  // namespace

SourceTextRoom::Room take_shared_room(std::size_t size, std::size_t alignment) {
    SharedRoom& room = shared_room();
    const std::lock_guard<std::mutex> guard(room.lock);
    std::shared_ptr<Chunk> chunk = room.current.lock();
    const auto offset = [&] {  // of the first aligned byte not yet used
        const auto start = reinterpret_cast<std::uintptr_t>(chunk->bytes);
        return ((start + chunk->used + alignment - 1) & ~(alignment - 1)) - start;
    };
    if (!chunk || offset() > chunk->size || chunk->size - offset() < size) {
        // Room for the alignment too where the chunk comes from the heap.
        const std::size_t needed = size + alignment;
        chunk = std::make_shared<Chunk>(std::max(chunk_size, (needed + huge_page - 1) / huge_page * huge_page));
        room.current = chunk;
    }
    const std::size_t at = offset();
    chunk->used = at + size;
    const std::span<const char> kept(chunk->bytes, chunk->size);
    return {chunk->bytes + at, std::move(chunk), kept};
}

bool shared_room_in_use() {
    SharedRoom& room = shared_room();
    const std::lock_guard<std::mutex> guard(room.lock);
    return !room.current.expired();
}

SourceTextRoom::Room SourceTextRoom::take(std::size_t size) {
    if (size < large_text) {
        std::shared_ptr<char[]> bytes(new char[size]);  // default-initialised: not cleared
        char* const taken = bytes.get();
        return {taken, std::move(bytes), {taken, size}};
    }
    return take_shared_room(size, 1);
}

}  // namespace edd
