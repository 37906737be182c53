// SPDX-License-Identifier: Apache-2.0
// The keyword table: description-language keywords, method-language keywords, reserved
// words, and the other words the grammars test for, each with its number (frontend/word.hpp).
// Matching is case-sensitive ("IF" and "if" are different words). The table is built when
// the program is compiled, so that the grammars name words by their text and compare numbers.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "frontend/punctuators.hpp"
#include "frontend/token_kind.hpp"
#include "frontend/word.hpp"

namespace edd {

// What the lexer makes of a word: its kind (the first set that holds it decides, else
// IDENTIFIER) and its number (none for a word outside the table).
struct WordClass {
    TokenKind kind;
    Word word;
};
WordClass classify_word(std::string_view word);

// The word as the keyword table spells it, a text that lasts as long as the program; empty
// when the word is not in the table.
std::string_view keyword_spelling(std::string_view word);

// The text of a word: a punctuator's spelling or the table's word; empty for none.
std::string_view spelling_of(Word word);

// The word that a token of `kind` with `text` stands for: none for a string literal.
Word word_of(std::uint32_t kind, std::string_view text);

namespace keyword_table {

// Sorted in byte order, so a lookup is a binary search.
inline constexpr std::string_view eddl_keywords[] = {
    "ACCESS", "ADD", "ALARM", "ALL", "ANALOG_INPUT", "ANALOG_OUTPUT", "AO", "APPINSTANCE", "ARRAY",
    "ARRAYS", "ASCII", "AUTO", "AXIS", "BAD", "BITSTRING", "BIT_ENUMERATED", "BLOCK", "CAPACITY",
    "CASE", "CATALOG", "CHARACTERISTICS", "CHART", "CHARTS", "CHILD", "CLASS", "CLOSE",
    "COLLECTION", "COLLECTIONS", "COLUMNBREAK", "COMMAND", "COMMANDS", "COMM_ERROR", "COMPUTATION",
    "CONNECTION", "CONSTANT_UNIT", "CONTAINED", "CORRECTABLE", "CORRECTION", "COUNT",
    "CURRENT_ROLE", "CYCLE_TIME", "DATA", "DATA0", "DATA1", "DATA2", "DATA3", "DATA4", "DATA5",
    "DATA6", "DATA7", "DATA8", "DATA9", "DATA_ENTRY_ERROR", "DATA_ENTRY_WARNING", "DATA_EXCHANGE",
    "DATE", "DATE_AND_TIME", "DD_REVISION", "DEFAULT", "DEFAULT_REFERENCE", "DEFAULT_VALUE",
    "DEFINITION", "DELETE", "DETAIL", "DEVICE", "DEVICE_REVISION", "DEVICE_TYPE", "DIAGNOSE",
    "DIAGNOSTIC", "DIALOG", "DIGITAL_INPUT", "DIGITAL_OUTPUT", "DISCRETE", "DISCRETE_INPUT",
    "DISCRETE_OUTPUT", "DISPLAY_FORMAT", "DISPLAY_ITEMS", "DISPLAY_VALUE", "DOUBLE", "DURATION",
    "DV", "DYNAMIC", "EDIT_DISPLAY", "EDIT_DISPLAYS", "EDIT_FORMAT", "EDIT_ITEMS", "ELEMENTS",
    "ELSE", "EMPHASIS", "ENTRY", "ENUMERATED", "ERROR", "EUC", "EVENT", "EVERYTHING",
    "EXIT_ACTIONS", "FACTORY", "FALSE", "FILE", "FILES", "FIRST", "FLOAT", "FREQUENCY",
    "FREQUENCY_INPUT", "FREQUENCY_OUTPUT", "FUNCTION", "GAUGE", "GOOD", "GRAPH", "GRAPHS", "GRID",
    "GROUP", "HANDLING", "HARDWARE", "HART", "HEIGHT", "HELP", "HIDDEN", "HIGH_HIGH_LIMIT",
    "HIGH_LIMIT", "HORIZONTAL", "HORIZONTAL_BAR", "HOURS", "IF", "IGNORE_IN_HANDHELD",
    "IGNORE_IN_HOST", "IMAGE", "IMPORT", "INDEX", "INFO", "INITIAL_VALUE", "INIT_ACTIONS", "INLINE",
    "INPUT", "INTEGER", "ITEMS", "ITEM_ARRAY", "ITEM_ARRAYS", "KEY_POINTS", "LABEL", "LARGE",
    "LAST", "LENGTH", "LIKE", "LINEAR", "LINE_COLOR", "LINE_TYPE", "LINK", "LIST", "LISTS",
    "LOAD_TO_APPLICATION", "LOAD_TO_DEVICE", "LOCAL", "LOCAL_DISPLAY", "LOGARITHMIC", "LOW_LIMIT",
    "LOW_LOW_LIMIT", "MANUFACTURER", "MARGINAL", "MAX_VALUE", "MAX_VALUE0", "MAX_VALUE1",
    "MAX_VALUE2", "MAX_VALUE3", "MAX_VALUE4", "MAX_VALUE5", "MAX_VALUE6", "MAX_VALUE7",
    "MAX_VALUE8", "MAX_VALUE9", "MEDIUM", "MEMBERS", "MENU", "MENUS", "METHOD", "METHODS",
    "MINUTES", "MIN_VALUE", "MIN_VALUE0", "MIN_VALUE1", "MIN_VALUE2", "MIN_VALUE3", "MIN_VALUE4",
    "MIN_VALUE5", "MIN_VALUE6", "MIN_VALUE7", "MIN_VALUE8", "MIN_VALUE9", "MISC", "MISC_ERROR",
    "MISC_WARNING", "MODE", "MODE_ERROR", "MORE", "NEXT", "NO_LABEL", "NO_UNIT", "NUMBER",
    "NUMBER_OF_ELEMENTS", "NUMBER_OF_POINTS", "OF", "OFFLINE", "ONLINE", "OPEN", "OPERATE",
    "OPERATION", "ORIENTATION", "OUTPUT", "PACKED_ASCII", "PAGE", "PARENT", "PASSWORD", "PATH",
    "PHYSICAL", "PI", "POST_EDIT_ACTIONS", "POST_READ_ACTIONS", "POST_WRITE_ACTIONS", "PREV",
    "PRE_EDIT_ACTIONS", "PRE_READ_ACTIONS", "PRE_WRITE_ACTIONS", "PROCESS", "PROCESS_ERROR",
    "PROCESS_VALUE", "PURPOSE", "READ", "READ_ONLY", "READ_TIMEOUT", "REDEFINE", "REDEFINITIONS",
    "REFRESH", "REFRESHS", "REFRESH_ACTIONS", "RELATIONS", "REPLY", "REQUEST", "RESPONSE_CODES",
    "REVIEW", "ROLE", "ROOT", "ROWBREAK", "SCALING", "SCALING_FACTOR", "SCOPE", "SECONDS", "SELECT",
    "SELF", "SELF_CORRECTING", "SEPARATOR", "SERVICE", "SIMULATION", "SLOT", "SMALL", "SOFTWARE",
    "SOURCE", "SOURCES", "STATE", "STRIP", "STYLE", "SUCCESS", "SUMMARY", "SWEEP", "TABLE",
    "TEMPORARY", "TIME", "TIME_FORMAT", "TIME_SCALE", "TRANSACTION", "TRANSDUCER", "TRANSPARENT",
    "TRUE", "TUNE", "TV", "TYPE", "UNCORRECTABLE", "UNIT", "UNSIGNED_INTEGER", "VALIDITY",
    "VARIABLE", "VARIABLES", "VECTORS", "VERTICAL", "VERTICAL_BAR", "VIEW_MAX", "VIEW_MIN",
    "WARNING", "WAVEFORM", "WAVEFORMS", "WIDTH", "WINDOW", "WRITE", "WRITE_AS_ONE", "WRITE_AS_ONES",
    "WRITE_TIMEOUT", "XX_LARGE", "XX_SMALL", "XY", "X_AXIS", "X_INCREMENT", "X_INITIAL", "X_LARGE",
    "X_SMALL", "X_VALUES", "YT", "Y_AXIS", "Y_VALUES",
};
static_assert(std::size(eddl_keywords) == 307);
static_assert(std::ranges::is_sorted(eddl_keywords));

inline constexpr std::string_view method_keywords[] = {
    "DD_ITEM", "DD_STRING", "DICTSTRID", "DICT_ID", "ITEM_ID", "MEMBER_ID", "METHODID", "METHOD_ID",
    "VARID", "break", "case", "char", "continue", "default", "do", "double", "else", "float", "for",
    "if", "int", "long", "return", "short", "signed", "switch", "unsigned", "while",
};
static_assert(std::size(method_keywords) == 28);
static_assert(std::ranges::is_sorted(method_keywords));

inline constexpr std::string_view reserved_words[] = {
    "auto", "const", "enum", "extern", "goto", "register", "sizeof", "static", "struct", "typedef",
    "union", "void", "volatile",
};
static_assert(std::size(reserved_words) == 13);
static_assert(std::ranges::is_sorted(reserved_words));

// The other words the grammars test for: names of attributes and item types, type and
// status words, identification keywords. Lexically they are identifiers.
inline constexpr std::string_view grammar_words[] = {
    "COMM", "EDD_PROFILE", "EDD_REVISION", "EDD_VERSION", "HEADER", "IGNORE_IN_TEMPORARY_MASTER",
    "MANUFACTURER_EXT", "MODULE", "OBJECT_REFERENCE", "OCTET", "RECORD", "TIME_VALUE", "VARIABLE_LIST",
    "VISIBLE", "cause_parameter", "effected_parameter", "method_parameters", "of_type", "references",
    "response_code",
};
static_assert(std::ranges::is_sorted(grammar_words));

inline constexpr bool contains(const auto& words, std::string_view word) { return std::ranges::binary_search(words, word); }

// Every word of a source is classified, most of them identifiers found in no set: one hash
// probe instead of several binary searches. Open addressing over a table at most half full;
// a word's number is its slot's.
struct ClassifiedWord {
    std::string_view word;  // empty: a free slot
    TokenKind kind = IDENTIFIER;
};
inline constexpr std::size_t word_table_size = word_number_limit - first_table_word;
static_assert(2 * (std::size(eddl_keywords) + std::size(method_keywords) + std::size(reserved_words) +
                   std::size(grammar_words)) <
              word_table_size);

// Mixes the length and four characters of the word: every source word is classified, and
// a hash over all its characters costs more than the collisions this one leaves.
inline constexpr std::size_t word_slot(std::string_view word) {
    const auto at = [word](std::size_t i) { return static_cast<std::uint32_t>(static_cast<unsigned char>(word[i])); };
    const std::size_t last = word.size() - 1;
    std::uint32_t hash = static_cast<std::uint32_t>(word.size()) * 0x9E3779B1u;
    hash ^= at(0) * 0x85EBCA77u;
    hash ^= at(last) * 0xC2B2AE3Du;
    hash ^= at(last > 0 ? 1 : 0) * 0x165667B1u;
    hash ^= at(last > 0 ? last - 1 : 0) * 0xD3A2646Cu;
    return (hash ^ (hash >> 15)) & (word_table_size - 1);
}

inline constexpr auto word_table = [] {
    std::array<ClassifiedWord, word_table_size> table{};
    // In set order, so that the first set that holds a word decides its kind.
    auto put = [&table](std::string_view word, TokenKind kind) {
        for (std::size_t i = word_slot(word);; i = (i + 1) & (word_table_size - 1)) {
            if (table[i].word == word) return;
            if (table[i].word.empty()) {
                table[i] = {word, kind};
                return;
            }
        }
    };
    for (std::string_view word : eddl_keywords) put(word, EDDL_KEYWORD);
    for (std::string_view word : method_keywords) put(word, METHOD_KEYWORD);
    for (std::string_view word : reserved_words) put(word, RESERVED_WORD);
    for (std::string_view word : grammar_words) put(word, IDENTIFIER);
    return table;
}();

// No word lies far from its slot, so a lookup compares a few words at most.
inline constexpr std::size_t longest_probe = [] {
    std::size_t longest = 0;
    for (std::size_t i = 0; i < word_table_size; ++i) {
        if (word_table[i].word.empty()) continue;
        const std::size_t home = word_slot(word_table[i].word);
        longest = std::max(longest, (i - home) & (word_table_size - 1));
    }
    return longest;
}();
static_assert(longest_probe <= 5);

// A bit per first byte and length (lengths from 63 share one): most identifiers are ruled
// out by it before a hash is computed.
inline constexpr auto word_shapes = [] {
    std::array<std::uint64_t, 256> shapes{};
    for (const ClassifiedWord& entry : word_table)
        if (!entry.word.empty())
            shapes[static_cast<unsigned char>(entry.word[0])] |= std::uint64_t{1} << std::min<std::size_t>(entry.word.size(), 63);
    return shapes;
}();

// Keywords are short: a byte loop once the lengths agree costs less than a call to memcmp.
inline constexpr bool same_word(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i] != b[i]) return false;
    return true;
}

// The slot holding `word`, or word_table_size when the table has no such word. (A slot, not a
// pointer: the compile-time check below may not compare pointers in every build.)
inline constexpr std::size_t find_slot(std::string_view word) {
    if (word.empty()) return word_table_size;
    if (!((word_shapes[static_cast<unsigned char>(word[0])] >> std::min<std::size_t>(word.size(), 63)) & 1))
        return word_table_size;
    for (std::size_t i = word_slot(word);; i = (i + 1) & (word_table_size - 1)) {
        if (same_word(word_table[i].word, word)) return i;
        if (word_table[i].word.empty()) return word_table_size;
    }
}

// The first sixteen bytes of each slot's word, zero past its end, as two machine words in
// the order a load from memory gives: a word of the source with sixteen bytes readable
// from its start is compared in two loads instead of a loop over its bytes.
struct WordHead {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
};

// Where byte `i` of an eight-byte load lands.
inline constexpr unsigned byte_shift(std::size_t i) {
    return static_cast<unsigned>(8 * (std::endian::native == std::endian::little ? i : 7 - i));
}

inline constexpr auto word_heads = [] {
    std::array<WordHead, word_table_size> heads{};
    for (std::size_t slot = 0; slot < word_table_size; ++slot) {
        const std::string_view word = word_table[slot].word;
        for (std::size_t i = 0; i < std::min<std::size_t>(word.size(), 16); ++i) {
            std::uint64_t& part = i < 8 ? heads[slot].first : heads[slot].second;
            part |= std::uint64_t{static_cast<unsigned char>(word[i])} << byte_shift(i % 8);
        }
    }
    return heads;
}();

// The first `n` bytes of an eight-byte load, the others zero.
inline std::uint64_t first_bytes(const char* at, std::size_t n) {
    std::uint64_t bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    if (n >= 8) return bytes;
    const std::uint64_t low = (std::uint64_t{1} << (8 * n)) - 1;
    return bytes & (std::endian::native == std::endian::little ? low : ~(~std::uint64_t{0} >> (8 * n)));
}

// find_slot for a word with at least sixteen bytes readable from its start (the lexer's
// words, away from the end of their text). The same slots, so the same numbers.
inline std::size_t find_slot_with_room(std::string_view word) {
    if (!((word_shapes[static_cast<unsigned char>(word[0])] >> std::min<std::size_t>(word.size(), 63)) & 1))
        return word_table_size;
    const std::uint64_t first = first_bytes(word.data(), word.size());
    const std::uint64_t second = word.size() > 8 ? first_bytes(word.data() + 8, word.size() - 8) : 0;
    for (std::size_t i = word_slot(word);; i = (i + 1) & (word_table_size - 1)) {
        const std::string_view entry = word_table[i].word;
        if (entry.size() == word.size() && word_heads[i].first == first && word_heads[i].second == second &&
            (word.size() <= 16 || same_word(entry.substr(16), word.substr(16))))
            return i;
        if (entry.empty()) return word_table_size;
    }
}

inline constexpr const ClassifiedWord* find_word(std::string_view word) {
    const std::size_t slot = find_slot(word);
    return slot == word_table_size ? nullptr : &word_table[slot];
}

// Every word of the sets is found, with the kind of the first set that holds it.
static_assert([] {
    const auto found = [](std::string_view word) {
        const TokenKind kind = contains(eddl_keywords, word)     ? EDDL_KEYWORD
                               : contains(method_keywords, word) ? METHOD_KEYWORD
                               : contains(reserved_words, word)  ? RESERVED_WORD
                                                                 : IDENTIFIER;
        const std::size_t slot = find_slot(word);
        return slot != word_table_size && word_table[slot].kind == kind;
    };
    return std::ranges::all_of(eddl_keywords, found) && std::ranges::all_of(method_keywords, found) &&
           std::ranges::all_of(reserved_words, found) && std::ranges::all_of(grammar_words, found);
}());

}  // namespace keyword_table

// classify_word for a word with at least sixteen bytes readable from its start, inline for
// the lexer, which classifies every word of the source.
inline WordClass classify_word_with_room(std::string_view word) {
    const std::size_t slot = keyword_table::find_slot_with_room(word);
    if (slot == keyword_table::word_table_size) return {IDENTIFIER, Word()};
    return {keyword_table::word_table[slot].kind, Word::numbered(static_cast<std::uint16_t>(first_table_word + slot))};
}

static_assert(std::ranges::all_of(punctuators, [](const Punctuator& p) { return p.kind < first_table_word; }));

// The number of a punctuator or of a word of the table; 0 for any other text.
constexpr std::uint16_t word_number(std::string_view text) {
    for (const Punctuator& punctuator : punctuators)
        if (punctuator.spelling == text) return static_cast<std::uint16_t>(punctuator.kind);
    const std::size_t slot = keyword_table::find_slot(text);
    return slot == keyword_table::word_table_size ? 0 : static_cast<std::uint16_t>(first_table_word + slot);
}

consteval Word::Word(const char* spelling) : number_(word_number(spelling)) {
    if (number_ == 0) throw "not a word of the keyword table";  // fails to compile
}

}  // namespace edd
