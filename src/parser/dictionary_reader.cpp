// SPDX-License-Identifier: Apache-2.0
#include "parser/dictionary_reader.hpp"

#include "diagnostics/exceptions.hpp"
#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "frontend/lexer.hpp"

namespace edd {

bool DictionaryReader::load() {
    try {
        while (!at_end()) parse_entry();
    } catch (const ParseError&) {
        return false;
    } catch (const std::exception& e) {
        diagnostics().standard_error(format_message(messages::failure_in_dictionary, {e.what()}));
        return false;
    }
    return true;
}

// entry : '[' integer ',' integer ']' identifier string { string }
// The two numbers are read and dropped; the marker keys of some tools are skipped.
void DictionaryReader::parse_entry() {
    expect("[");
    expect_kind(INTEGER, messages::expected_integer_but_got);
    expect(",");
    expect_kind(INTEGER, messages::expected_integer_but_got);
    expect("]");
    std::string key(expect_kind(IDENTIFIER, messages::expected_dictionary_key));
    std::string text(expect_kind(STRING, messages::expected_string_literal));
    while (at_kind(STRING)) {
        advance();
        text += consumed().text();
    }
    if (key == "xxx_highestoffset" || key == "xxx_highoffset") return;
    dictionary_.add(DictionaryEntry{std::move(key), std::move(text)});
}

DictionariesRead read_dictionaries(const std::vector<std::string>& names, InputFiles& files, Diagnostics& diagnostics,
                                   Dictionary& merged) {
    for (const std::string& name : names) {
        std::optional<std::string> text = files.read(name);
        if (!text) {
            diagnostics.line(format_message(messages::failed_to_open_dictionary, {name}));
            return DictionariesRead::not_opened;
        }
        Lexer lexer(Lexer::FromText{}, std::move(*text), name, diagnostics);
        DictionaryReader reader(lexer, diagnostics);
        if (!reader.load()) return DictionariesRead::not_parsed;
        merged.append_all(reader.take_dictionary());
    }
    return DictionariesRead::read;
}

}  // namespace edd
