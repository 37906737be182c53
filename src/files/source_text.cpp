// SPDX-License-Identifier: Apache-2.0
#include "files/source_text.hpp"

#include <algorithm>

#include "files/platform.hpp"

namespace edd {

namespace {

constexpr std::size_t huge_page = std::size_t{2} << 20;
// Texts from this size on share chunks: below it, the faults of the pages a text takes
// from the heap cost less than clearing a huge page.
constexpr std::size_t large_text = std::size_t{64} << 10;
// Address space only: a page is taken when a text is first read into it.
constexpr std::size_t chunk_size = std::size_t{32} << 20;

}  // namespace

SourceText::SourceText(std::string text) {
    auto owned = std::make_shared<const std::string>(std::move(text));
    text_ = *owned;
    owner_ = std::move(owned);
}

struct SourceTextRoom::Chunk {
    explicit Chunk(std::size_t size) : bytes(static_cast<char*>(platform::allocate_chunk(size))), size(size) {}
    ~Chunk() { platform::free_chunk(bytes, size); }
    Chunk(const Chunk&) = delete;
    Chunk& operator=(const Chunk&) = delete;
    char* bytes;
    std::size_t size;
};

SourceTextRoom::Room SourceTextRoom::take(std::size_t size) {
    if (size < large_text) {
        std::shared_ptr<char[]> bytes(new char[size]);  // default-initialised: not cleared
        return {bytes.get(), std::move(bytes)};
    }
    if (!chunk_ || chunk_->size - used_ < size) {
        chunk_ = std::make_shared<Chunk>(std::max(chunk_size, (size + huge_page - 1) / huge_page * huge_page));
        used_ = 0;
    }
    char* bytes = chunk_->bytes + used_;
    used_ += size;
    return {bytes, chunk_};
}

}  // namespace edd
