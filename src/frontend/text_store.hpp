// Texts made for tokens rather than cut from a source: a float given its '.', a pasted or a
// stringified token. Tokens only view their texts, so the store stays as long as any token
// it gave a text to; the lexers of one preprocessor share one.
#pragma once

#include <deque>
#include <string>
#include <string_view>

namespace edd {

class TextStore {
public:
    // A deque never moves what it holds, so the views stay valid as the store grows.
    std::string_view keep(std::string text) { return texts_.emplace_back(std::move(text)); }

private:
    std::deque<std::string> texts_;
};

}  // namespace edd
