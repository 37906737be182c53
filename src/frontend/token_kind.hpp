// SPDX-License-Identifier: Apache-2.0
// Token kinds. A single-character punctuator is its own character code; named kinds sit
// above 255. The numbers are part of the output (unnamed kinds print as numbers), so the
// odd gaps of the operator block are kept as they are.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace edd {

enum TokenKind : std::uint32_t {
    END_OF_FILE = 0,
    EXCLAMATIONMARK = '!',
    PREPROCESSOR_SWITCH = '#',
    PERCENT = '%',
    AMPERSAND = '&',
    LEFT_BRACKET = '(',
    RIGHT_BRACKET = ')',
    STAR = '*',
    PLUS = '+',
    COMMA = ',',
    MINUS = '-',
    DOT = '.',
    SLASH = '/',
    COLON = ':',
    SEMICOLON = ';',
    LESS_THEN = '<',
    EQUALS = '=',
    GRATER_THEN = '>',
    QUESTIONMARK = '?',
    LEFT_SQUARE_BRACKET = '[',
    PREPROCESSOR_ESCAPE = '\\',
    RIGHT_SQUARE_BRACKET = ']',
    CARET = '^',
    LEFT_CURLY_BRACKET = '{',
    HORIZONTAL_LINE = '|',
    RIGHT_CURLY_BRACKET = '}',
    TILDE = '~',

    IDENTIFIER = 257,
    INTEGER = 258,
    FLOAT = 262,
    STRING = 263,
    EDDL_KEYWORD = 264,
    METHOD_KEYWORD = 265,
    RESERVED_WORD = 272,

    SHIFT_LEFT = 0x201,
    SHIFT_RIGHT = 0x202,
    LESS_EQUAL = 0x203,
    GREATER_EQUAL = 0x204,
    EQUAL_EQUAL = 0x205,
    NOT_EQUAL = 0x206,
    AND_AND = 0x207,
    OR_OR = 0x208,
    PLUS_PLUS = 0x209,
    MINUS_MINUS = 0x210,
    PLUS_ASSIGN = 0x212,
    MINUS_ASSIGN = 0x213,
    STAR_ASSIGN = 0x214,
    SLASH_ASSIGN = 0x215,
    PERCENT_ASSIGN = 0x216,
    SHIFT_LEFT_ASSIGN = 0x217,
    SHIFT_RIGHT_ASSIGN = 0x218,
    AND_ASSIGN = 0x219,
    XOR_ASSIGN = 0x220,
    OR_ASSIGN = 0x221,
    ARROW = 0x250,
    PREPROCESSOR_PASTE = 0x301,

    WHITESPACE = 65530,
    NEWLINE = 65532,
    COMMENT = 65533,
    UNDEFINED = 65534,
    ERROR = 65535,
};

// The printed name of a kind, if it has one ("END_OF_FILE", "LESS_THEN", ...).
std::optional<std::string_view> kind_name(std::uint32_t kind);

// The name of a kind, or its decimal number when it has none.
std::string kind_to_string(std::uint32_t kind);

}  // namespace edd
