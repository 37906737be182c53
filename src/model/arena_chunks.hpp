// SPDX-License-Identifier: Apache-2.0
// The large blocks an arena carves its memory from, taken from the system in its own way
// (arena_chunks_posix.cpp, arena_chunks_windows.cpp).
#pragma once

#include <cstddef>

namespace edd {

// Throws std::bad_alloc when there is no memory.
void* allocate_chunk(std::size_t size);
void free_chunk(void* memory, std::size_t size);

}  // namespace edd
