// SPDX-License-Identifier: Apache-2.0
#include "files/range_resource.hpp"

#include <functional>
#include <new>

namespace edd {

RangeResource::RangeResource(std::size_t size) {
    try {
        range_ = ReservedRange(size, false);
    } catch (const std::bad_alloc&) {  // a bound on the address space: the heap serves
    }
}

void* RangeResource::do_allocate(std::size_t bytes, std::size_t alignment) {
    const std::size_t at = (used_ + alignment - 1) & ~(alignment - 1);
    if (at > range_.size() || bytes > range_.size() - at)
        return ::operator new(bytes, std::align_val_t(alignment));
    range_.make_usable(at + bytes);
    used_ = at + bytes;
    return range_.bytes() + at;
}

void RangeResource::do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) {
    if (!in_range(memory)) ::operator delete(memory, bytes, std::align_val_t(alignment));
}

// Compared as addresses rather than pointers: the heap's blocks lie outside the range.
bool RangeResource::in_range(const void* memory) const {
    const std::less<const void*> before;
    return !before(memory, range_.bytes()) && before(memory, range_.bytes() + range_.size());
}

}  // namespace edd
