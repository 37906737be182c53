// SPDX-License-Identifier: Apache-2.0
#include "frontend/token_memory.hpp"

#include <new>

namespace edd {

TokenMemory::TokenMemory() {
    try {
        room_ = ReservedRange(room_size, false);
    } catch (const std::bad_alloc&) {  // a bound on the address space: pieces come from the heap
    }
}

TokenMemory::~TokenMemory() {
    for (char* piece : heap_pieces_) ::operator delete(piece, std::align_val_t(grain));
}

void* TokenMemory::do_allocate(std::size_t bytes, std::size_t alignment) {
    if (!small(bytes, alignment)) return ::operator new(bytes, std::align_val_t(alignment));
    FreeBlock*& first = free_[size_class(bytes)];
    if (first == nullptr) return carve(size_class(bytes) * grain);
    FreeBlock* block = first;
    first = block->next;
    return block;
}

void TokenMemory::do_deallocate(void* memory, std::size_t bytes, std::size_t alignment) {
    if (!small(bytes, alignment)) return ::operator delete(memory, std::align_val_t(alignment));
    FreeBlock*& first = free_[size_class(bytes)];
    first = ::new (memory) FreeBlock{first};
}

// What is left of a piece too small for the block stays unused: less than a block in 16.
void* TokenMemory::carve(std::size_t bytes) {
    if (static_cast<std::size_t>(end_ - next_) < bytes) take_piece();
    void* block = next_;
    next_ += bytes;
    return block;
}

// A piece of the room continues the one before, so nothing is left of that one.
void TokenMemory::take_piece() {
    if (room_.size() - room_used_ >= piece_size) {
        room_.make_usable(room_used_ + piece_size);
        char* const start = room_.bytes() + room_used_;
        room_used_ += piece_size;
        if (start != end_) next_ = start;
        end_ = start + piece_size;
        return;
    }
    next_ = static_cast<char*>(::operator new(piece_size, std::align_val_t(grain)));
    heap_pieces_.push_back(next_);
    end_ = next_ + piece_size;
}

}  // namespace edd
