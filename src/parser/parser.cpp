// SPDX-License-Identifier: Apache-2.0
#include "parser/parser.hpp"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <typeinfo>

#include "diagnostics/exceptions.hpp"
#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "diagnostics/type_name.hpp"
#include "model/parameter_value.hpp"
#include "model/simple_value.hpp"
#include "parser/canonical_path.hpp"
#include "text/text_utils.hpp"

namespace edd {

Parser::Parser(TokenStream& source, std::string file_name, const Profile& profile,
               std::vector<std::string> include_paths, InputFiles& files, Diagnostics& diagnostics)
    : TokenReader(source, diagnostics),
      file_name_(std::move(file_name)),
      profile_(profile),
      include_paths_(std::move(include_paths)),
      files_(files),
      import_chain_(std::make_shared<std::vector<std::string>>(1, canonical_path(file_name_))) {}

ValuePtr Parser::make_simple(ValueKind kind, std::string_view text) { return make<SimpleValue>(kind, text); }

ValuePtr Parser::make_keyword(const Token& token) {
    const Word word = token.word();
    if (!word.in_table()) return make_simple(ValueKind::KEYWORD, token.text());
    if (keyword_values_.empty()) keyword_values_.resize(word_number_limit - first_table_word);
    ValuePtr& value = keyword_values_[word.number() - first_table_word];
    if (!value.is_set()) value = make<SimpleValue>(ValueKind::KEYWORD, LastingText{spelling_of(word)});
    return value;
}

ValuePtr Parser::expect_integer() {
    return make_simple(ValueKind::INTEGER, expect_kind(INTEGER, messages::expected_integer_but_got));
}

ValuePtr Parser::expect_float() { return make_simple(ValueKind::FLOAT, expect_kind(FLOAT, messages::expected_float_but_got)); }

ValuePtr Parser::expect_keyword() {
    expect_kind(EDDL_KEYWORD, messages::expected_keyword_but_got);
    return make_keyword(consumed());
}

ValuePtr Parser::parse_one_of(WordSet words) {
    expect_one_of(words);
    return make_keyword(consumed());
}

// The handlers other than ParseError report faults of the converter rather than of the
// description: on standard error, not counted.
bool Parser::parse() {
    try {
        parse_description();
    } catch (const ParseError&) {
        return false;
    } catch (const std::exception& e) {
        report_fault(format_message(messages::failure_in_parser_with, {e.what(), readable_type_name(typeid(e))}));
        return false;
    } catch (...) {
        report_fault(messages::failure_in_parser);
        return false;
    }
    return get_error_count() == 0;
}

// description : identification { import | item_definition }
void Parser::parse_description() {
    parse_identification(description_.identification);
    while (!at_end()) {
        if (at("IMPORT")) parse_import();
        else parse_item_definition();
    }
}

// identification : identification_entry { ',' identification_entry }
void Parser::parse_identification(Identification& identification) {
    parse_identification_entry(identification);
    while (at(",")) {
        expect(",");
        parse_identification_entry(identification);
    }
}

namespace {

// The identification entries: the keyword, what it takes and the field it sets.
struct IdentificationEntry {
    enum Takes : std::uint8_t { INTEGER_OR_NAME, INTEGER, STRING };
    std::string_view keyword;
    Takes takes;
    ValuePtr Identification::*field;
    std::string_view refusal = {};  // what INTEGER_OR_NAME says of anything else
};
constexpr IdentificationEntry identification_entries[] = {
    {"DD_REVISION", IdentificationEntry::INTEGER, &Identification::dd_revision},
    {"DEVICE_REVISION", IdentificationEntry::INTEGER, &Identification::device_revision},
    {"DEVICE_TYPE", IdentificationEntry::INTEGER_OR_NAME, &Identification::device_type, messages::device_type_value},
    {"EDD_PROFILE", IdentificationEntry::INTEGER, &Identification::edd_profile},
    {"EDD_REVISION", IdentificationEntry::INTEGER, &Identification::dd_revision},
    {"EDD_VERSION", IdentificationEntry::INTEGER, &Identification::edd_version},
    {"MANUFACTURER", IdentificationEntry::INTEGER_OR_NAME, &Identification::manufacturer, messages::manufacturer_value},
    {"MANUFACTURER_EXT", IdentificationEntry::STRING, &Identification::manufacturer_ext},
};

}  // namespace

// identification_entry : ( MANUFACTURER | DEVICE_TYPE ) ( integer | identifier )
//                      | ( DEVICE_REVISION | DD_REVISION | EDD_REVISION | EDD_PROFILE | EDD_VERSION ) integer
//                      | MANUFACTURER_EXT string
void Parser::parse_identification_entry(Identification& identification) {
    advance();
    const auto entry = std::ranges::find(identification_entries, consumed_word(), &IdentificationEntry::keyword);
    if (entry == std::end(identification_entries))
        fatal(format_message(messages::expected_identification, {consumed().text()}));
    ValuePtr& field = identification.*(entry->field);
    switch (entry->takes) {
    case IdentificationEntry::INTEGER_OR_NAME:
        advance();
        if (!consumed().is(INTEGER) && !consumed().is(IDENTIFIER)) fatal_at_consumed(entry->refusal);
        field = make_simple(consumed().is(INTEGER) ? ValueKind::INTEGER : ValueKind::IDENTIFIER, consumed().text());
        return;
    case IdentificationEntry::INTEGER: field = make_simple(ValueKind::INTEGER, to_text(read_integer())); return;
    case IdentificationEntry::STRING:
        field = make_simple(ValueKind::STRING, expect_kind(STRING, messages::expected_string_literal_and_got));
        return;
    }
}

// item_definition : item_type [ OF item_type ] name [ LIKE [ item_type ] base ] [ parameters ] body
//                 | name LIKE [ item_type ] base body
void Parser::parse_item_definition() {
    const Position origin{peek().file(), peek().line()};
    // The texts read stay as long as the token stream: views, not copies.
    const std::string_view first = read_identifier(false);
    ItemType type = find_item_type_read(first);
    std::string_view name;
    std::string_view of_type;
    if (type == ItemType::UNKNOWN) {
        if (!at("LIKE")) fatal_at_consumed(messages::expected_edd_object);
        name = first;  // name LIKE [item_type] base
    } else {
        check_item_profile(type, first);
        if ((type == ItemType::COLLECTION || type == ItemType::ITEM_ARRAY || type == ItemType::ARRAY) && accept("OF"))
            of_type = read_identifier(false);
        name = read_identifier(true);
    }
    const std::string_view parent = accept("LIKE") ? parse_like_base(type) : std::string_view();
    item_slots_.release();
    Item item(*description_.arena, type, name, origin, &item_slots_);
    item.reserve_attributes(attribute_count);  // in the reused buffer: no regrowth as attributes come
    if (!of_type.empty()) item.set_attribute(AttributeId::of_type, make_simple(ValueKind::KEYWORD, of_type));
    if (type == ItemType::METHOD && at("(")) parse_method_header(item);
    parse_item_body(item);
    Item kept(item, *description_.arena);
    kept.set_parent(parent);
    register_item(std::move(kept));
}

// like_base : [ item_type ] base
// The type named after LIKE is the item's own; without one the base supplies it.
std::string_view Parser::parse_like_base(ItemType& type) {
    const std::string_view word = read_identifier(false);
    const ItemType named = find_item_type_read(word);
    if (named == ItemType::UNKNOWN) return word;
    if (type == ItemType::UNKNOWN) {
        type = named;
        check_item_profile(type, word);
    }
    return read_identifier(false);
}

void Parser::check_item_profile(ItemType type, std::string_view word) {
    if (!profile_.allows_item(type)) error(format_message(messages::object_not_allowed, {word, profile_.name()}));
}

// method_parameters : '(' [ parameter { ',' parameter } ] ')'
void Parser::parse_method_header(Item& item) {
    expect("(");
    if (!at(")")) item.set_attribute(AttributeId::method_parameters, parse_list(List::METHOD_PARAMETERS));
    expect(")");
}

void Parser::register_item(Item item) {
    if (const Item* first = description_.items.find(item.name())) {
        const std::string origin = position_text(first->origin().file_name(), first->origin().line);
        error(format_message(messages::duplicate_definition, {item.name(), first->name(), origin}));
        return;
    }
    description_.items.insert(std::move(item));
}

}  // namespace edd
