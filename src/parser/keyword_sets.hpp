// SPDX-License-Identifier: Apache-2.0
// The keyword sets that the attribute grammars accept, each in byte order (proved below).
#pragma once

#include <algorithm>
#include <string_view>

#include "parser/word_set.hpp"

namespace edd::keyword_sets {

inline constexpr WordList arithmetic_types{"DOUBLE", "FLOAT", "INTEGER", "UNSIGNED_INTEGER"};
inline constexpr WordList enumerated_types{"BIT_ENUMERATED", "ENUMERATED"};
inline constexpr WordList index_type{"INDEX"};
inline constexpr WordList string_types{"ASCII",        "BITSTRING", "EUC",    "OCTET",
                                                    "PACKED_ASCII", "PASSWORD",  "VISIBLE"};
inline constexpr WordList date_time_types{"DATE", "DATE_AND_TIME", "DURATION", "TIME", "TIME_VALUE"};
inline constexpr WordList object_reference_type{"OBJECT_REFERENCE"};
// The words of an enumerated type's body that are value attributes; anything else there
// starts enumerators.
inline constexpr WordList value_attributes{"DEFAULT_VALUE", "INITIAL_VALUE", "MAX_VALUE", "MIN_VALUE"};
inline constexpr WordList status_classes{
    "ALL", "AO", "BAD", "COMM", "COMM_ERROR", "CORRECTABLE", "DATA", "DETAIL", "DV", "ERROR", "EVENT", "HARDWARE",
    "IGNORE_IN_HANDHELD", "IGNORE_IN_HOST", "IGNORE_IN_TEMPORARY_MASTER", "INFO", "MISC", "MODE", "MORE", "PROCESS",
    "SELF_CORRECTING", "SOFTWARE", "STATE", "SUMMARY", "TV", "UNCORRECTABLE", "WARNING"};
inline constexpr WordList classes{
    "ALARM", "ANALOG_INPUT", "ANALOG_OUTPUT", "COMPUTATION", "CONTAINED", "CORRECTION", "DEVICE", "DIAGNOSTIC",
    "DIGITAL_INPUT", "DIGITAL_OUTPUT", "DISCRETE_INPUT", "DISCRETE_OUTPUT", "DYNAMIC", "FREQUENCY_INPUT",
    "FREQUENCY_OUTPUT", "HART", "INPUT", "LOCAL", "LOCAL_DISPLAY", "OPERATE", "OUTPUT", "SERVICE", "TUNE"};
inline constexpr WordList purposes{"CATALOG", "DIAGNOSE", "LOAD_TO_APPLICATION", "LOAD_TO_DEVICE",
                                                "MENU", "PROCESS_VALUE", "SIMULATION", "TABLE"};
inline constexpr WordList response_code_types{"DATA_ENTRY_ERROR", "DATA_ENTRY_WARNING", "MISC_ERROR",
                                                           "MISC_WARNING", "MODE_ERROR", "PROCESS_ERROR", "SUCCESS"};
inline constexpr WordList menu_layout_words{"COLUMNBREAK", "ROWBREAK", "SEPARATOR"};
inline constexpr WordList menu_item_qualifiers{"DISPLAY_VALUE", "HIDDEN",    "INLINE", "NO_LABEL",
                                                            "NO_UNIT",       "READ_ONLY", "REVIEW"};
inline constexpr WordList waveform_types{"HORIZONTAL", "VERTICAL", "XY", "YT"};
inline constexpr WordList method_return_types{"char", "double", "float", "int", "long", "unsigned"};
// The second word after "unsigned".
inline constexpr WordList unsigned_return_types{"char", "double", "float", "int", "long", "unsigned"};

// The sets the TYPE of a variable starts with.
inline constexpr WordSet type_words[] = {arithmetic_types, enumerated_types, index_type,
                                         string_types,     date_time_types,  object_reference_type};

static_assert(std::ranges::all_of(
    std::initializer_list<WordSet>{arithmetic_types, enumerated_types, index_type, string_types, date_time_types,
                                   object_reference_type, value_attributes, status_classes, classes, purposes,
                                   response_code_types, menu_layout_words, menu_item_qualifiers, waveform_types,
                                   method_return_types, unsigned_return_types},
    [](WordSet words) { return std::ranges::is_sorted(words.words()); }));

}  // namespace edd::keyword_sets
