// SPDX-License-Identifier: Apache-2.0
// The whole conversion in memory: preprocess, parse, resolve LIKE items, build the
// document and serialise it. Whatever the input, the text produced must be a well-formed
// XML 1.0 document in UTF-8; the process aborts when it is not.
//
// The input is a description, optionally followed by kDictionarySeparator and the text of
// a dictionary file. It is also written to the scratch directory as main.ddl, which is the
// only include path, so self-includes and self-imports are reachable. Beside it lie a
// description to import (lib.ddl, which includes defs.h) and an image file.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "fuzz_support.hpp"
#include "model/dictionary.hpp"
#include "parser/dictionary_reader.hpp"
#include "parser/parser.hpp"
#include "model/like_resolution.hpp"
#include "xml/xml_writer.hpp"

namespace {

constexpr std::string_view kDictionarySeparator = "\n%%DICTIONARY%%\n";

[[noreturn]] void reject(const char* why, const std::string& xml) {
    std::fprintf(stderr, "ill-formed output: %s\n%.*s\n", why, static_cast<int>(std::min<std::size_t>(xml.size(), 4096)),
                 xml.data());
    std::abort();
}

// Decodes one well-formed UTF-8 sequence at `at`; false for anything else (overlongs,
// surrogates, code points above U+10FFFF, truncated sequences).
bool decode(std::string_view text, std::size_t& at, std::uint32_t& c) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[at + k]); };
    const unsigned char lead = byte(0);
    std::size_t length = 0;
    if (lead < 0x80) length = 1, c = lead;
    else if (lead >= 0xC2 && lead <= 0xDF) length = 2, c = lead & 0x1Fu;
    else if (lead >= 0xE0 && lead <= 0xEF) length = 3, c = lead & 0x0Fu;
    else if (lead >= 0xF0 && lead <= 0xF4) length = 4, c = lead & 0x07u;
    else return false;
    if (length > text.size() - at) return false;
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte(k) & 0xC0) != 0x80) return false;
        c = (c << 6) | (byte(k) & 0x3Fu);
    }
    const std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (c < smallest[length] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return false;
    at += length;
    return true;
}

// XML 1.0 Char: tab, line feed, carriage return, and the ranges without surrogates and
// U+FFFE/U+FFFF.
bool is_xml_char(std::uint32_t c) {
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

void check_document(const std::string& xml) {
    for (std::size_t at = 0; at < xml.size();) {
        std::uint32_t c = 0;
        if (!decode(xml, at, c)) reject("not UTF-8", xml);
        if (!is_xml_char(c)) reject("character outside XML 1.0", xml);
    }
    // Model text never reaches the document as a character reference ("&" is written
    // "&amp;"), but for tab, line feed and carriage return in attribute values, which a
    // reader would otherwise turn into blanks; any other means a character the serialiser
    // could not write as it stands.
    for (auto at = xml.find("&#"); at != std::string::npos; at = xml.find("&#", at + 1)) {
        const std::string_view reference = std::string_view(xml).substr(at, 5);
        if (reference != "&#09;" && reference != "&#10;" && reference != "&#13;") reject("character reference", xml);
    }
    pugi::xml_document parsed;
    const pugi::xml_parse_result result =
        parsed.load_buffer(xml.data(), xml.size(), pugi::parse_default | pugi::parse_declaration, pugi::encoding_utf8);
    if (!result) reject(result.description(), xml);
    if (std::string_view(parsed.document_element().name()) != "EDDL") reject("root element", xml);
}

constexpr std::string_view kLibrary =
    "MANUFACTURER 1, DEVICE_TYPE 3, DEVICE_REVISION 1, DD_REVISION 1\n"
    "#include \"defs.h\"\n"
    "VARIABLE lib_value { LABEL LIB_LABEL; HELP [lib_help]; CLASS CONTAINED;\n"
    "    TYPE ENUMERATED { { 0, \"zero\" }, { 1, [one] } } }\n"
    "MENU lib_menu { LABEL \"Library\"; ITEMS { lib_value, IF (lib_value == 1) { lib_method } } }\n"
    "METHOD lib_method { LABEL \"Run\"; DEFINITION { int i; for (i = 0; i < 3; i++) { ACKNOWLEDGE(\"x\"); } } }\n"
    "lib_copy LIKE lib_value { LABEL PAIR(lib, _copy); }\n";
constexpr std::string_view kDefinitions = "#define LIB_LABEL \"Library value\"\n#define PAIR(a, b) a ## b\n";

std::string image_bytes() {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const edd::fuzz::ScratchDirectory directory;
    static const bool prepared = [] {
        directory.write("image.png", image_bytes());
        directory.write("lib.ddl", kLibrary);
        directory.write("defs.h", kDefinitions);
        return true;
    }();
    (void)prepared;
    edd::Diagnostics diagnostics(edd::fuzz::null_stream(), edd::fuzz::null_stream());
    edd::InputFiles files;

    const std::string input = edd::fuzz::as_text(data, size);
    const std::size_t split = input.find(kDictionarySeparator);
    std::string source = input.substr(0, split);
    const std::string main_file = directory.file("main.ddl");
    directory.write("main.ddl", source);
    const std::vector<std::string> include_paths{directory.str()};

    try {
        edd::Lexer lexer(edd::Lexer::FromText{}, std::move(source), main_file, diagnostics);
        edd::Preprocessor preprocessor(lexer, include_paths, files, diagnostics);
        edd::Parser parser(preprocessor, main_file, edd::fuzz::profile_for(size), include_paths, files, diagnostics);
        parser.parse();
        edd::Description description = parser.take_description();
        edd::resolve_like_items(description, diagnostics);
        edd::XML_Writer writer(std::move(description), include_paths, files, diagnostics);
        if (split != std::string::npos) {
            edd::Lexer dictionary_lexer(edd::Lexer::FromText{}, input.substr(split + kDictionarySeparator.size()),
                                        "main.dct", diagnostics);
            edd::DictionaryReader reader(dictionary_lexer, diagnostics);
            if (reader.load()) writer.set_dictionary(reader.dictionary());
        }
        writer.build();
        check_document(writer.xml());
    } catch (const std::exception&) {
        // The driver reports these as fatal errors: the documented end of such a run.
    }
    return 0;
}
