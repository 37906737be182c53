// SPDX-License-Identifier: Apache-2.0
#include "frontend/text_store.hpp"

#include <algorithm>

#include "files/source_text.hpp"

namespace edd {

std::string_view TextStore::join(std::string_view first, std::string_view second) {
    const std::size_t size = first.size() + second.size();
    if (size > left_) {
        // A text larger than a chunk gets one of its own; the current chunk stays open.
        const std::size_t capacity = std::max(size, chunk_size);
        char* start = new_chunk(capacity);
        if (capacity > chunk_size) {
            std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), start));
            return {start, size};
        }
        free_ = start;
        left_ = capacity;
    }
    char* start = free_;
    std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), start));
    free_ += size;
    left_ -= size;
    return {start, size};
}

char* TextStore::new_chunk(std::size_t size) {
    if (shared_room_in_use()) {
        SourceTextRoom::Room room = take_shared_room(size, 1);
        chunks_.push_back(std::move(room.owner));
        return room.bytes;
    }
    std::shared_ptr<char[]> chunk(new char[size]);  // default-initialised: not cleared
    char* start = chunk.get();
    chunks_.push_back(std::move(chunk));
    return start;
}

}  // namespace edd
