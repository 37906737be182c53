// SPDX-License-Identifier: Apache-2.0
// The elements of a table that grows one at a time. A small one lies on the heap and moves
// as it grows, as a vector's would. A large one lies in a reserved range and grows in place:
// a vector that doubles touches fresh pages for every copy, and a page's first touch costs
// more than filling it. In a run whose sources are large, the table starts in its range.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "files/reserved_range.hpp"
#include "files/source_text.hpp"

namespace edd {

template <class T>
class GrowingArray {
public:
    // With `huge_pages`, a large array is offered huge pages in a run whose sources are
    // large too (they share room), so that a smaller run never pays for one.
    explicit GrowingArray(bool huge_pages = false) : huge_pages_(huge_pages) {}
    GrowingArray(const GrowingArray& other) : huge_pages_(other.huge_pages_) {
        reserve(other.size_);
        for (const T& element : other.elements()) emplace_back(element);
    }
    GrowingArray(GrowingArray&& other) noexcept { swap(other); }
    GrowingArray& operator=(GrowingArray other) noexcept {
        swap(other);
        return *this;
    }
    ~GrowingArray() {
        std::destroy_n(data_, size_);
        if (range_.size() == 0 && data_ != nullptr) std::allocator<T>().deallocate(data_, capacity_);
    }

    std::span<T> elements() { return {data_, size_}; }
    std::span<const T> elements() const { return {data_, size_}; }
    T& operator[](std::size_t i) { return data_[i]; }
    const T& operator[](std::size_t i) const { return data_[i]; }
    std::size_t size() const { return size_; }
    bool empty() const { return size_ == 0; }

    // Room for `count` elements in all.
    void reserve(std::size_t count) {
        if (count > capacity_) grow(count);
    }
    template <class... Args>
    T& emplace_back(Args&&... args) {
        if (size_ == capacity_) grow(size_ + 1);
        T* element = ::new (static_cast<void*>(data_ + size_)) T(std::forward<Args>(args)...);
        ++size_;
        return *element;
    }
    // Grows to `count` elements (at least size()), the new ones value-initialised.
    void grow_to(std::size_t count) {
        reserve(count);
        std::uninitialized_value_construct(data_ + size_, data_ + count);
        size_ = count;
    }

private:
    // Up to this size the heap serves: a small table needs no range of its own.
    static constexpr std::size_t largest_on_heap = std::size_t{64} << 10;
    // A range holds this many times the size that needed it: it is mere address space until used.
    static constexpr std::size_t range_growth = 16;
    static constexpr std::size_t smallest_range = std::size_t{64} << 20;

    void grow(std::size_t count) {
        if (count <= range_.size() / sizeof(T)) {
            range_.make_usable(count * sizeof(T));
            capacity_ = range_.usable() / sizeof(T);
        } else {
            move_to(std::max(count, 2 * capacity_));
        }
    }
    void move_to(std::size_t capacity) {
        GrowingArray moved(huge_pages_);
        const std::size_t bytes = capacity * sizeof(T);
        if (bytes <= largest_on_heap && !shared_room_in_use()) {
            moved.data_ = std::allocator<T>().allocate(capacity);
            moved.capacity_ = capacity;
        } else {
            moved.range_ = ReservedRange(std::max(smallest_range, range_growth * bytes), huge_pages_ && shared_room_in_use());
            moved.data_ = reinterpret_cast<T*>(moved.range_.bytes());
            moved.grow(capacity);
        }
        for (T& element : elements()) moved.emplace_back(std::move_if_noexcept(element));
        swap(moved);
    }
    void swap(GrowingArray& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(capacity_, other.capacity_);
        std::swap(range_, other.range_);
        std::swap(huge_pages_, other.huge_pages_);
    }

    T* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
    ReservedRange range_;  // none while on the heap
    bool huge_pages_ = false;
};

}  // namespace edd
