// SPDX-License-Identifier: Apache-2.0
// The parser over in-memory sources, through the preprocessor as the converter runs it.
// parse() must return whatever the input; the text dump walks every parsed value.
#include <cstddef>
#include <cstdint>

#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "fuzz_support.hpp"
#include "model/item.hpp"
#include "parser/parser.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const edd::fuzz::ScratchDirectory empty;
    edd::Diagnostics diagnostics(edd::fuzz::null_stream(), edd::fuzz::null_stream());
    edd::InputFiles files;
    edd::Lexer lexer(edd::Lexer::FromText{}, edd::fuzz::as_text(data, size), "main.ddl", diagnostics);
    edd::Preprocessor preprocessor(lexer, {empty.str()}, files, diagnostics);
    edd::Parser parser(preprocessor, "main.ddl", edd::fuzz::profile_for(size), {empty.str()}, files, diagnostics);
    parser.parse();
    edd::dump_items(edd::fuzz::null_stream(), parser.description().items.items());
    return 0;
}
