// SPDX-License-Identifier: Apache-2.0
// The memory of one description: its values, their texts and their lists are carved from
// large chunks, which all go together with the description. Nothing made here is
// destroyed on its own, so what lives here owns no memory of its own: texts are views
// into the arena (or into the sources it shares room with) and lists are std::pmr
// containers on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "files/source_text.hpp"
#include "text/byte_copy.hpp"

namespace edd {

// `text` copied to `to`, which has room for it.
inline std::string_view copy_to(void* to, std::string_view text) {
    copy_bytes(static_cast<char*>(to), text.data(), text.size());
    return {static_cast<const char*>(to), text.size()};
}

// A copy of `text` in `resource`, which the view then needs to outlive.
inline std::string_view copy_text(std::pmr::memory_resource& resource, std::string_view text) {
    return text.empty() ? std::string_view() : copy_to(resource.allocate(text.size(), 1), text);
}

// The same, unless the text is a keyword: then the keyword table's own text, which lasts as
// long as the program (names of types and attributes and keyword values mostly are).
std::string_view copy_word(std::pmr::memory_resource& resource, std::string_view text);

class Arena final : public std::pmr::memory_resource {
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena() override;

    // A new T, its constructor given this arena first (values copy their texts into it).
    template <class T, class... Args>
    T* make(Args&&... args) {
        return ::new (take(sizeof(T), alignof(T))) T(*this, std::forward<Args>(args)...);
    }
    // copy_text without the virtual call, and without a copy where the arena keeps the text
    // already: a large description's sources are read into the room it shares with them.
    std::string_view copy(std::string_view text) {
        if (text.empty()) return {};
        return keeps(text) ? text : copy_to(take(text.size(), 1), text);
    }
    std::string_view word(std::string_view text);
    // Whether `text` lies in room the arena keeps, where it stays as it is: the room shared
    // with sources from which the arena took its latest piece.
    bool keeps(std::string_view text) const {
        const auto at = reinterpret_cast<std::uintptr_t>(text.data());
        return at >= kept_begin_ && at < kept_end_ && text.size() <= kept_end_ - at;
    }
    // A copy of `items` with room for `room` of them (at least their number), which need no
    // construction of their own.
    template <class T>
    T* copy_array(std::span<const T> items, std::size_t room) {
        static_assert(std::is_trivially_copyable_v<T>);
        T* copy = static_cast<T*>(take(room * sizeof(T), alignof(T)));
        copy_bytes(reinterpret_cast<char*>(copy), reinterpret_cast<const char*>(items.data()), items.size_bytes());
        return copy;
    }
    // For the lists: they allocate from the arena and never give anything back.
    std::pmr::memory_resource* resource() { return this; }

private:
    // The next `bytes` of the current chunk, or of a new one.
    void* take(std::size_t bytes, std::size_t alignment) {
        const std::uintptr_t at = (next_ + alignment - 1) & ~(alignment - 1);
        if (at < next_ || at > end_ || bytes > end_ - at) return take_new_chunk(bytes, alignment);
        next_ = at + bytes;
        return reinterpret_cast<void*>(at);
    }
    void* take_new_chunk(std::size_t bytes, std::size_t alignment);
    void* take_shared(std::size_t bytes, std::size_t alignment);
    void keep(SourceTextRoom::Room& room);

    void* do_allocate(std::size_t bytes, std::size_t alignment) override { return take(bytes, alignment); }
    void do_deallocate(void*, std::size_t, std::size_t) override {}
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }

    struct Chunk {
        void* memory;
        std::size_t size;
    };
    std::vector<Chunk> chunks_;                          // from the heap
    std::vector<std::shared_ptr<const void>> shared_;  // keep the room shared with the sources
    std::uintptr_t kept_begin_ = 0;
    std::uintptr_t kept_end_ = 0;
    std::uintptr_t next_ = 0;
    std::uintptr_t end_ = 0;
    std::size_t next_chunk_size_ = std::size_t{64} << 10;
};

}  // namespace edd
