// The memory of one description: its values, their texts and their lists are carved from
// large blocks, which all go together with the description. Nothing made here is
// destroyed on its own, so what lives here owns no memory of its own: texts are views
// into the arena and lists are std::pmr containers on it.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory_resource>
#include <new>
#include <string_view>
#include <utility>

namespace edd {

// A copy of `text` in `resource`, which the view then needs to outlive.
inline std::string_view copy_text(std::pmr::memory_resource& resource, std::string_view text) {
    if (text.empty()) return {};
    char* bytes = static_cast<char*>(resource.allocate(text.size(), 1));
    std::memcpy(bytes, text.data(), text.size());
    return {bytes, text.size()};
}

class Arena {
public:
    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    // A new T, its constructor given this arena first (values copy their texts into it).
    template <class T, class... Args>
    T* make(Args&&... args) {
        return ::new (resource_.allocate(sizeof(T), alignof(T))) T(*this, std::forward<Args>(args)...);
    }
    std::string_view copy(std::string_view text) { return copy_text(resource_, text); }
    std::pmr::memory_resource* resource() { return &resource_; }

private:
    std::pmr::monotonic_buffer_resource resource_{std::size_t{1} << 16};
};

}  // namespace edd
