// SPDX-License-Identifier: Apache-2.0
#include "frontend/text_store.hpp"

#include <algorithm>

namespace edd {

std::string_view TextStore::join(std::string_view first, std::string_view second) {
    const std::size_t size = first.size() + second.size();
    if (size > left_) {
        // A text larger than a chunk gets one of its own; the current chunk stays open.
        const std::size_t capacity = std::max(size, chunk_size);
        auto chunk = std::make_unique_for_overwrite<char[]>(capacity);
        char* start = chunk.get();
        chunks_.push_back(std::move(chunk));
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

}  // namespace edd
