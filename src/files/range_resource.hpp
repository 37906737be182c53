// SPDX-License-Identifier: Apache-2.0
// Memory for the chunks of a pool that lives as long as a run, carved in order from one
// reserved range. The range is made usable ahead of need a piece at a time, so its pages are
// taken in a few calls rather than a fault each, as a heap growing under many small blocks
// takes them. What it gives stays taken until it goes, which suits a pool: it gives its
// chunks back only then. Once the range is full, or where none could be reserved, the heap
// serves.
#pragma once

#include <cstddef>
#include <memory_resource>

#include "files/reserved_range.hpp"

namespace edd {

class RangeResource final : public std::pmr::memory_resource {
public:
    explicit RangeResource(std::size_t size);

private:
    void* do_allocate(std::size_t bytes, std::size_t alignment) override;
    void do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) override;
    bool do_is_equal(const std::pmr::memory_resource& other) const noexcept override { return this == &other; }
    bool in_range(const void* memory) const;

    ReservedRange range_;
    std::size_t used_ = 0;
};

}  // namespace edd
