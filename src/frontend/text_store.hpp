// SPDX-License-Identifier: Apache-2.0
// Texts made for tokens rather than cut from a source: a float given its '.', a pasted or a
// stringified token. Tokens only view their texts, so the store stays as long as any token
// it gave a text to; the lexers of one preprocessor share one. Texts are packed into large
// chunks that never move: one allocation serves thousands of short texts. In a run whose
// sources are large, the chunks come from the room they share, whose pages are taken already.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace edd {

class TextStore {
public:
    // A copy of `text` that lasts as long as the store.
    std::string_view keep(std::string_view text) { return join(text, {}); }
    // The two texts one after the other, as one.
    std::string_view join(std::string_view first, std::string_view second);

private:
    static constexpr std::size_t chunk_size = 64 * 1024;

    char* new_chunk(std::size_t size);

    std::vector<std::shared_ptr<const void>> chunks_;
    char* free_ = nullptr;
    std::size_t left_ = 0;
};

}  // namespace edd
