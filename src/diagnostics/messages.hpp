// SPDX-License-Identifier: Apache-2.0
// Every fixed text the program prints or puts in an exception, each a whole template: "%n"
// stands for the n-th argument (format.hpp). They are output, not prose: they are
// reproduced letter for letter, their authors' spellings included.
#pragma once

#include <string_view>

namespace edd::messages {

// Positions and the printed form of a token.
inline constexpr std::string_view position = "%0(%1)";  // file, line
inline constexpr std::string_view printed_token = "%0(%1)";  // kind name or number, text

// Command line and driver.
inline constexpr std::string_view banner = "Tarnwick - Release: 1.0.0.12";
inline constexpr std::string_view usage = "Usage: %0 [options] file";
inline constexpr std::string_view help_lines[] = {
    "Options:",
    "    -I <path>  Include path.",
    "    -o <file>  Output xml file.",
    "    -e <file>  Ouput of diagnostic messages.",
    "    -d <file>  dictionary",
    "    -p <prof>  The validation profile. Currently PROFIBUS and HART.",
    "    -c         Continue on error.",
    "    -h         This help",
};
inline constexpr std::string_view missing_include_path = "Missing include path after -I.";
inline constexpr std::string_view missing_output_file = "Missing output file after -o.";
inline constexpr std::string_view missing_error_file = "Missing file after -e.";
inline constexpr std::string_view missing_dictionary_file = "Missing file after -d.";
inline constexpr std::string_view missing_profile = "Missing parameter after -p.";
inline constexpr std::string_view unknown_argument = "Unknown argument %0.";
inline constexpr std::string_view multiple_inputs = "error: multiple input files given.";
inline constexpr std::string_view no_input_file = "No input file specefied.";
inline constexpr std::string_view cannot_open_error_file = "Failed to open error file %0.";
inline constexpr std::string_view could_not_open_input = "Could not open input file %0.";
inline constexpr std::string_view failed_to_open_input = "Failed to open input file %0.";
inline constexpr std::string_view failed_to_open_dictionary = "Failed to open dictionary file %0.";
inline constexpr std::string_view fatal_error = "Encountered a fatal error: %0(%1)";  // message, type name
inline constexpr std::string_view output_is_input = "Output file %0 is the input file %1.";
inline constexpr std::string_view outputs_collide = "Output files %0 and %1 are the same file.";
inline constexpr std::string_view output_was_read = "Output file %0 is the same file as %1, which the run read.";
inline constexpr std::string_view dump_not_saved = "Could not save the dump to %0: %1.";
inline constexpr std::string_view dependency_file_not_saved = "Could not save the dependency file %0: %1.";
inline constexpr std::string_view dependency_name_unwritable =
    "The dependency file %0 cannot list %1: make would misread that name.";
inline constexpr std::string_view out_of_memory = "Out of memory while %0.";
inline constexpr std::string_view doing_start = "starting";
inline constexpr std::string_view doing_parse = "reading %0 with the files it includes and imports";
inline constexpr std::string_view doing_resolve = "resolving the LIKE items";
inline constexpr std::string_view doing_dictionaries = "loading the dictionary files";
inline constexpr std::string_view doing_build = "reading the image files and ordering the items";
inline constexpr std::string_view doing_save = "writing the document %0";
inline constexpr std::string_view file_too_large = "File %0 is larger than 1 GiB.";
inline constexpr std::string_view stream_too_large = "File %0 is a pipe or device that did not end within 16 MiB.";
inline constexpr std::string_view stream_stalled = "File %0 is a pipe or device that sent nothing for a second.";
inline constexpr std::string_view pipe_without_reader = "no process reads from it";

// Imports: an imported item whose name is taken. %0 the name, %1 the first one's position.
inline constexpr std::string_view duplicate_object =
    "Duplicate definition of object %0. Obejct was previusly defined at %1. ";

// Lexer.
inline constexpr std::string_view trailing_backslash = "Trailing '\\'.";
inline constexpr std::string_view malformed_float = "Malfomed floating point literal.";

// Preprocessor.
inline constexpr std::string_view preprocessor_error_token = "preprocessor error";
inline constexpr std::string_view preprocessor_failure = "failure in prerpocessor";
// %0 the exception's message, %1 its type's name.
inline constexpr std::string_view preprocessor_failure_with = "failure in prerpocessor: %0%1";
inline constexpr std::string_view unknown_directive = "Unknown preprocessor directive %0.";
inline constexpr std::string_view line_not_implemented =
    "Preprocessor directive 'line' is not implmented.";
inline constexpr std::string_view macro_name_not_identifier =
    "%0 is not an identifier. Macro names must be identifiers.";
inline constexpr std::string_view macro_already_defined = "Macro %0 is already defined.";
inline constexpr std::string_view empty_macro_arguments =
    "Function macros with empty arguments are not defined by the EDDL spec.";
inline constexpr std::string_view error_in_argument_list = "Error in argument list.";
inline constexpr std::string_view macro_name_must_be_identifier = "Macro name must be a identifier.";
inline constexpr std::string_view undefine_unknown_macro =
    "Trying to undefine macro %0 but macro is not defined.";
inline constexpr std::string_view eof_in_conditional = "End of file within conditional directive.";
inline constexpr std::string_view include_angle_brackets = "Include with '<>' are not implemented.";
// %1 is each include path followed by a line end.
inline constexpr std::string_view include_not_found = "Could not find or read include file %0.\nInclude path is:\n%1";
inline constexpr std::string_view include_no_file = "Error in include, no proper file given.";
inline constexpr std::string_view include_too_deep = "Include nesting too deep.";
inline constexpr std::string_view macro_expansion_too_large = "Macro expansion too large.";
inline constexpr std::string_view nesting_too_deep = "Nesting too deep.";
inline constexpr std::string_view parameter_count_mismatch = "The number of parameters does not match.";
inline constexpr std::string_view stringify_without_content =
    "Tried to strigify tokens but no content is available.";
inline constexpr std::string_view paste_without_content =
    "Tried to paste tokens but no content is available.";

// Parser: token expectations and names. %0 is the token's text, %1 the token as printed
// (kind and text), %2 what was expected.
inline constexpr std::string_view expected_text = "Expected %2 but got %0";
inline constexpr std::string_view expected_integer_but_got = "Expected integer but got %0";
inline constexpr std::string_view expected_float_but_got = "Expected float but got %0";
inline constexpr std::string_view expected_keyword_but_got = "Expected keyword but got %0";
inline constexpr std::string_view expected_string_literal = "Expected string literal but got %1.";
inline constexpr std::string_view expected_string_literal_and_got = "Expected string literal and got %1.";
inline constexpr std::string_view expected_integer = "Expected integer";
inline constexpr std::string_view expected_keywords = "Expected keywords %2 but got: %0.";
inline constexpr std::string_view expected_identifier_but_got = "Expected identifier but got %0";
inline constexpr std::string_view expected_dictionary_key = "Expected identifier but got %1.";
inline constexpr std::string_view reserved_eddl_keyword = "%0 is a reseved EDDL keyword.";
inline constexpr std::string_view reserved_method_keyword = "%0 is a reseved METHOD keyword.";
inline constexpr std::string_view reserved_keyword = "%0 is a reseved keyword.";
// Faults of the converter itself, on standard error.
inline constexpr std::string_view failure_in_parser = "failure in parser";
inline constexpr std::string_view failure_in_parser_with = "failure in parser: %0(%1)";  // message, type name
inline constexpr std::string_view failure_position = "position: %0";
inline constexpr std::string_view failure_in_dictionary = "failure in parser:%0";

// Parser: items and attributes.
inline constexpr std::string_view expected_edd_object = "Expected edd object but got %0.";
inline constexpr std::string_view object_not_allowed = "Object of type %0 is not allowed in %1.";
inline constexpr std::string_view attribute_not_allowed = "%0 is not allowed on object of type %1 in %2.";
inline constexpr std::string_view attribute_not_defined = "%0 is not allowd on object of type %1";
inline constexpr std::string_view invalid_attribute_id = "%0 is not a valid attribute id";
// %0 the new item's name, %1 the first one's, %2 the first one's position.
inline constexpr std::string_view duplicate_definition =
    "Duplicate definition of Object \"%0\" Object \"%1\" is initialy defined at %2\n";

// Parser: expressions.
inline constexpr std::string_view expected_primary = "Expected primary expression but got%0";
inline constexpr std::string_view expected_string = "Expected string but got %0";
inline constexpr std::string_view trailing_comma = "Trailing comma.";

// Parser: conditionals and lists.
inline constexpr std::string_view trailing_semicolon = "Trailing semicolon.";
inline constexpr std::string_view empty_else = "Empty ELSE clause.";
inline constexpr std::string_view select_two_defaults = "Select has can only have one default value.";
inline constexpr std::string_view expected_case_or_default = "Expected 'CASE' or 'DEFAULT' but got '%0'.";
inline constexpr std::string_view stray = "Stray %0";

// Parser: identification, imports, LIKE.
inline constexpr std::string_view expected_identification = "Expected identification but got %0";
inline constexpr std::string_view manufacturer_value =
    "Value for MANUFACTURER must be an integer or identifiert. The value is %0.";
inline constexpr std::string_view device_type_value =
    "Value for DEVICE_TYPE must be an integer or identifiert. The value is %0.";
inline constexpr std::string_view import_not_found = "Could not open import DD %0. File not found.";
inline constexpr std::string_view import_object_missing = "Could not import object with id %0";
inline constexpr std::string_view invalid_import_id = "Not a valid item import id.";
inline constexpr std::string_view redefine_wrong_type = "Object being REDEFINEed is not the type specified.";
inline constexpr std::string_view redefine_missing = "Object being REDEFINEed is not in imported DD.";
inline constexpr std::string_view delete_wrong_type = "Object being DELETEed is not the type specified.";
inline constexpr std::string_view delete_missing = "Object being DELETEed is not in imported DD.";
inline constexpr std::string_view expected_redefinition =
    "Expected item redefinition or item deletion but got %0.";
inline constexpr std::string_view no_identifiers_supported = "No Identifiers supported.";
inline constexpr std::string_view import_cycle = "Recursive import of %0.";
inline constexpr std::string_view like_undefined = "Error: %0 is not defined but is referenced in %1 LIKE ";
inline constexpr std::string_view like_cycle = "Error: LIKE cycle through %0";

// Parser: attribute grammars.
inline constexpr std::string_view expected_type_specifier = "Expected type specifier.";
inline constexpr std::string_view trailing_comma_in_enumerator = "Trailing comma in enumerator definition.";
inline constexpr std::string_view error_in_enumerator = "Error in reading enumerator.";
inline constexpr std::string_view trailing_comma_in_items = "Trailing comma in ITEMS.";
inline constexpr std::string_view expected_reference_or_keyword = "Expected reference or keyword but got %0.";
inline constexpr std::string_view expected_menu_item_qualifier = "Expected menu item qualifier.";
inline constexpr std::string_view expected_waveform_type = "Expected YT, XY, HORIZONTAL or VERTICAL but got %0.";
inline constexpr std::string_view expected_yt_statement =
    "Expected X_INITIAL, X_INCREMENT, NUMBER_OF_POINTS or Y_VALUES but got %0.";
inline constexpr std::string_view expected_xy_statement = "Expected NUMBER_OF_POINTS, X_VALUES or Y_VALUES but got %1.";
inline constexpr std::string_view expected_point = "Expected reference, integer or float but got %0.";
inline constexpr std::string_view expected_key_points = "Expected X_VALUES or Y_VALUES but got %0.";
inline constexpr std::string_view parameter_not_unsigned = "The parameter of type '%0' can not be unsigned.";
inline constexpr std::string_view unknown_parameter_type = "Unknown parameter type %0.";

// The model and its texts.
inline constexpr std::string_view null_pointer = "NullPointer";
inline constexpr std::string_view invalid_attribute = "Invalid object attribute id.";
inline constexpr std::string_view undefined_attribute = "Trying to access attribtue that is not defined.";
inline constexpr std::string_view not_in_attribute_list = "AttributeList: Type not in list.";
inline constexpr std::string_view not_in_item_table = "Object not in dd.";
inline constexpr std::string_view key_defined_twice = "%0 is already defined in dictionary %1";  // key, name
inline constexpr std::string_view key_not_defined = "%0 is not defined in dictionary %1";
inline constexpr std::string_view empty_number = "str is empty.";
inline constexpr std::string_view invalid_digit = "%0 is not a valid digit.";

// XML document and image files.
inline constexpr std::string_view invalid_element_name = "XML: \"%0\" is not a valid element name.";
inline constexpr std::string_view document_not_saved = "XML: could not save the document to %0: %1.";
inline constexpr std::string_view could_not_open_related_file = "Could not open related file %0.";
inline constexpr std::string_view images_too_large = "Image file %0 takes the embedded images beyond 512 MiB.";
inline constexpr std::string_view image_without_path = "IMAGE objects must have a PATH attribtue.";
inline constexpr std::string_view image_path_not_string = "IMAGE.PATH may only be a string expression.";

}  // namespace edd::messages
