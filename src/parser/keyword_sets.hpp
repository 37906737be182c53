// The keyword sets that the attribute grammars accept. Sets are ordered because a refusal
// lists the accepted words in byte order.
#pragma once

#include <set>
#include <string>

namespace edd::keyword_sets {

using WordSet = std::set<std::string, std::less<>>;

inline const WordSet arithmetic_types = {"INTEGER", "UNSIGNED_INTEGER", "DOUBLE", "FLOAT"};
inline const WordSet enumerated_types = {"ENUMERATED", "BIT_ENUMERATED"};
inline const WordSet index_type = {"INDEX"};
inline const WordSet string_types = {"ASCII", "BITSTRING", "EUC", "PACKED_ASCII", "PASSWORD", "VISIBLE", "OCTET"};
inline const WordSet date_time_types = {"DATE", "DATE_AND_TIME", "DURATION", "TIME", "TIME_VALUE"};
inline const WordSet object_reference_type = {"OBJECT_REFERENCE"};
inline const WordSet status_classes = {
    "ALL", "AO", "BAD", "COMM", "COMM_ERROR", "CORRECTABLE", "DATA", "DETAIL", "DV", "ERROR", "EVENT", "HARDWARE",
    "IGNORE_IN_HANDHELD", "IGNORE_IN_HOST", "IGNORE_IN_TEMPORARY_MASTER", "INFO", "MISC", "MODE", "MORE", "PROCESS",
    "SELF_CORRECTING", "SOFTWARE", "STATE", "SUMMARY", "TV", "UNCORRECTABLE", "WARNING"};
inline const WordSet classes = {
    "ALARM", "ANALOG_INPUT", "ANALOG_OUTPUT", "COMPUTATION", "CONTAINED", "CORRECTION", "DEVICE", "DIAGNOSTIC",
    "DIGITAL_INPUT", "DIGITAL_OUTPUT", "DISCRETE_INPUT", "DISCRETE_OUTPUT", "DYNAMIC", "FREQUENCY_INPUT",
    "FREQUENCY_OUTPUT", "HART", "INPUT", "LOCAL", "LOCAL_DISPLAY", "OPERATE", "OUTPUT", "SERVICE", "TUNE"};
inline const WordSet purposes = {"CATALOG", "DIAGNOSE", "LOAD_TO_APPLICATION", "LOAD_TO_DEVICE", "MENU",
                                 "PROCESS_VALUE", "SIMULATION", "TABLE"};
inline const WordSet response_code_types = {"DATA_ENTRY_ERROR", "DATA_ENTRY_WARNING", "MISC_ERROR", "MISC_WARNING",
                                            "MODE_ERROR", "PROCESS_ERROR", "SUCCESS"};
inline const WordSet menu_layout_words = {"SEPARATOR", "COLUMNBREAK", "ROWBREAK"};
inline const WordSet menu_item_qualifiers = {"REVIEW", "INLINE", "DISPLAY_VALUE", "READ_ONLY", "HIDDEN", "NO_LABEL",
                                             "NO_UNIT"};
inline const WordSet waveform_types = {"YT", "XY", "HORIZONTAL", "VERTICAL"};
inline const WordSet method_return_types = {"char", "int", "long", "float", "double", "unsigned"};
inline const WordSet unsigned_return_types = {"unsigned", "char", "int", "long", "float", "double"};
inline const WordSet method_parameter_types = {"char", "int", "long", "float", "double", "unsigned", "DD_STRING",
                                               "DD_ITEM"};

}  // namespace edd::keyword_sets
