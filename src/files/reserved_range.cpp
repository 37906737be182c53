// SPDX-License-Identifier: Apache-2.0
#include "files/reserved_range.hpp"

#include <algorithm>
#include <utility>

#include "files/platform.hpp"

namespace edd {

namespace {

constexpr std::size_t huge_page = std::size_t{2} << 20;
// Small pages are made usable this many at a time: a few system calls, not one per page.
constexpr std::size_t small_step = std::size_t{64} << 10;

std::size_t round_up(std::size_t size, std::size_t step) { return (size + step - 1) / step * step; }

}  // namespace

ReservedRange::ReservedRange(std::size_t size, bool huge_pages)
    : bytes_(static_cast<char*>(platform::reserve_range(round_up(size, huge_page), huge_pages))),
      size_(round_up(size, huge_page)),
      huge_pages_(huge_pages) {}

ReservedRange ReservedRange::cleared(std::size_t size) {
    if (size == 0) return {};
    ReservedRange range(size, false);
    range.make_usable(size);
    return range;
}

ReservedRange::~ReservedRange() {
    if (bytes_ != nullptr) platform::release_range(bytes_, size_);
}

void ReservedRange::make_usable(std::size_t size) {
    if (size <= usable_) return;
    const std::size_t step = huge_pages_ && size > huge_page ? huge_page : small_step;
    const std::size_t usable = std::min(size_, round_up(size, step));
    platform::commit_range(bytes_ + usable_, usable - usable_);
    usable_ = usable;
}

void ReservedRange::swap(ReservedRange& other) noexcept {
    std::swap(bytes_, other.bytes_);
    std::swap(size_, other.size_);
    std::swap(usable_, other.usable_);
    std::swap(huge_pages_, other.huge_pages_);
}

}  // namespace edd
