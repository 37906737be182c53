// SPDX-License-Identifier: Apache-2.0
// Address space reserved in one piece and made usable from its start as it is needed: what
// it holds grows in place, is never copied, and each of its pages is touched once.
#pragma once

#include <cstddef>

namespace edd {

class ReservedRange {
public:
    ReservedRange() = default;  // none: size() is 0
    // `size` bytes of address space, rounded up to whole huge pages. With `huge_pages` it is
    // made usable beyond its first huge page in whole huge pages, offered as such where the
    // system has them: one fault where 512 small pages would each cost one. The first is made
    // usable as small pages are, so that a range that stays small takes little.
    ReservedRange(std::size_t size, bool huge_pages);
    // `size` bytes, usable and cleared at once: for a table whose size is known before it is
    // filled, its pages taken in one call rather than a fault each. None for no bytes.
    static ReservedRange cleared(std::size_t size);
    ReservedRange(ReservedRange&& other) noexcept { swap(other); }
    ReservedRange& operator=(ReservedRange&& other) noexcept {
        swap(other);
        return *this;
    }
    ~ReservedRange();

    char* bytes() const { return bytes_; }
    std::size_t size() const { return size_; }
    std::size_t usable() const { return usable_; }
    // At least the first `size` bytes usable; `size` is at most size(). Throws std::bad_alloc.
    void make_usable(std::size_t size);

private:
    void swap(ReservedRange& other) noexcept;

    char* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::size_t usable_ = 0;
    bool huge_pages_ = false;
};

}  // namespace edd
