// SPDX-License-Identifier: Apache-2.0
// The dictionary loader over arbitrary bytes: load() must return, and a loaded dictionary
// must answer for every key it holds.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "frontend/lexer.hpp"
#include "fuzz_support.hpp"
#include "model/dictionary.hpp"
#include "parser/dictionary_reader.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    edd::Diagnostics diagnostics(edd::fuzz::null_stream(), edd::fuzz::null_stream());
    edd::Lexer lexer(edd::Lexer::FromText{}, edd::fuzz::as_text(data, size), "main.dct", diagnostics);
    edd::DictionaryReader reader(lexer, diagnostics);
    if (!reader.load()) return 0;
    const edd::Dictionary& dictionary = reader.dictionary();
    for (const edd::DictionaryEntry& entry : dictionary.entries()) {
        if (!dictionary.contains(entry.key)) std::abort();
        edd::fuzz::null_stream() << edd::to_string(dictionary.entry(entry.key));
    }
    return 0;
}
