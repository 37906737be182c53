// Reads a dictionary file: entries "[n, m] key "text" { "text" }" straight from the lexer.
#pragma once

#include <utility>

#include "model/dictionary.hpp"
#include "parser/token_reader.hpp"

namespace edd {

class DictionaryReader : public TokenReader {
public:
    DictionaryReader(TokenStream& source, Diagnostics& diagnostics) : TokenReader(source, diagnostics) {}

    // False when an entry was malformed or a key came twice; lets no exception out.
    bool load();
    const Dictionary& dictionary() const { return dictionary_; }
    Dictionary take_dictionary() { return std::move(dictionary_); }

private:
    void parse_entry();

    Dictionary dictionary_;
};

}  // namespace edd
