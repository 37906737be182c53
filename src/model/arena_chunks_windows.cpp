// SPDX-License-Identifier: Apache-2.0
// Windows gives large pages only to privileged processes: chunks come from the heap.
#include <new>

#include "model/arena_chunks.hpp"

namespace edd {

void* allocate_chunk(std::size_t size) { return ::operator new(size); }

void free_chunk(void* memory, std::size_t) { ::operator delete(memory); }

}  // namespace edd
