// SPDX-License-Identifier: Apache-2.0
// Reads a dictionary file: entries "[n, m] key "text" { "text" }" straight from the lexer.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "files/input_files.hpp"
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

enum class DictionariesRead { read, not_opened, not_parsed };

// Reads the -d files in order into `merged`, stopping at the first that cannot be opened
// (its line printed) or read.
DictionariesRead read_dictionaries(const std::vector<std::string>& names, InputFiles& files, Diagnostics& diagnostics,
                                   Dictionary& merged);

}  // namespace edd
