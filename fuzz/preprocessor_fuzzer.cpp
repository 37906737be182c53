// SPDX-License-Identifier: Apache-2.0
// Lexer and preprocessor over arbitrary bytes: every input must drain to END_OF_FILE.
// Includes search one empty directory, so an #include is always "not found".
#include <cstddef>
#include <cstdint>

#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "fuzz_support.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const edd::fuzz::ScratchDirectory empty;
    edd::Diagnostics diagnostics(edd::fuzz::null_stream(), edd::fuzz::null_stream());
    edd::InputFiles files;
    edd::Lexer lexer(edd::Lexer::FromText{}, edd::fuzz::as_text(data, size), "main.ddl", diagnostics);
    edd::Preprocessor preprocessor(lexer, {empty.str()}, files, diagnostics);
    while (!preprocessor.next_token().is(edd::END_OF_FILE)) {
    }
    return 0;
}
