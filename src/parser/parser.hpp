// SPDX-License-Identifier: Apache-2.0
// The EDDL parser: a recursive-descent reader of one description on the token reader.
// This header is the table of contents of the grammar; the rules are split over
// parse_*.cpp by area. Problems are reported and counted; a fatal one throws ParseError,
// which parse() catches: there is no resynchronisation.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <memory_resource>
#include <string>
#include <utility>
#include <vector>

#include "files/input_files.hpp"
#include "model/attribute.hpp"
#include "model/code_value.hpp"
#include "model/description.hpp"
#include "model/type_value.hpp"
#include "parser/parse_observer.hpp"
#include "parser/token_reader.hpp"
#include "validation/profile.hpp"

namespace edd {

class Parser : public TokenReader {
public:
    Parser(TokenStream& source, std::string file_name, const Profile& profile, std::vector<std::string> include_paths,
           InputFiles& files, Diagnostics& diagnostics);

    // True when no error was counted and nothing fatal happened. Lets no exception out.
    bool parse();
    const Description& description() const { return description_; }
    Description take_description() { return std::move(description_); }
    // Told of every reference, dictionary key and string read, imported files' included.
    void set_observer(ParseObserver* observer) { observer_ = observer; }

private:
    class ImportSet;
    class ListBuilder;
    class ComposedBuilder;

    // Values are made in the description's arena.
    template <class V, class... Args>
    V* make(Args&&... args) {
        return description_.arena->make<V>(std::forward<Args>(args)...);
    }
    ValuePtr make_simple(ValueKind kind, std::string_view text);
    // A keyword value of a token: a word of the keyword table keeps the table's own text,
    // and one value of it serves every use.
    ValuePtr make_keyword(const Token& token);
    // One token of a kind, or of a set of words, as a value of that kind; a mismatch is fatal.
    ValuePtr expect_integer();
    ValuePtr expect_float();
    ValuePtr expect_keyword();
    ValuePtr parse_one_of(WordSet words);
    Position position_of(const Token& token) const { return {token.file(), token.line()}; }
    // What the name read_identifier gave last stands for, by its token's word; nothing when
    // the name is empty (the token was no name).
    ItemType find_item_type_read(std::string_view name) const {
        return name.empty() ? ItemType::UNKNOWN : find_item_type(consumed().word());
    }
    AttributeId find_attribute_read(std::string_view name) const {
        return name.empty() ? AttributeId::INVALID : find_attribute(consumed().word());
    }
    ValuePtr observed(ValuePtr value, Position where) {
        if (observer_ != nullptr) observer_->value_read(*value, where);
        return value;
    }

    // ---- Top level (parser.cpp) ------------------------------------------------------
    void parse_description();
    void parse_identification(Identification& identification);
    void parse_identification_entry(Identification& identification);
    void parse_item_definition();
    std::string_view parse_like_base(ItemType& type);
    void check_item_profile(ItemType type, std::string_view word);
    void parse_method_header(Item& item);
    void register_item(Item item);

    // ---- IMPORT and REDEFINITIONS (parse_import.cpp) -----------------------------------
    // Imported files open at once, against stack exhaustion: "Nesting too deep." beyond.
    static constexpr std::size_t max_import_depth = 200;
    // Distinct files imported in one run.
    static constexpr std::size_t max_imports = 10'000;
    // Each imported file is converted once per run, whatever the number of IMPORTs naming
    // it, which all select from the one table (a REDEFINE changes a copy of its own).
    struct ImportedFile {
        std::shared_ptr<Arena> arena;  // first: it outlives the items, whose lists it holds
        ItemTable items;
    };
    using ImportedFiles = std::map<platform::FileId, std::shared_ptr<const ImportedFile>>;
    void parse_import();
    std::shared_ptr<const ImportedFile> imported_file(const std::string& name, const std::string& path);
    ItemTable parse_imported_file(const std::string& path);
    void parse_import_list(const ItemTable& imported, ImportSet& selected);
    void parse_redefinitions(ImportSet& selected);

    // ---- Item bodies and attributes (parse_items.cpp) ------------------------------------
    void parse_item_body(Item& item);
    void unshare_merged_lists(Item& item);
    void parse_attribute_statement(Item& item);
    void parse_attribute(Item& item, bool redefine);
    void parse_attribute_deletion(Item& item);
    ValuePtr parse_attribute_value(const Item& item, AttributeId id);
    void store_attribute(Item& item, AttributeId id, ValuePtr value);
    ValuePtr parse_generic_attribute_value();

    // ---- Expressions (parse_expression.cpp) ------------------------------------------
    // Each level's continue_ or _operation function reads what follows once an operator
    // has been seen, out of line.
    ValuePtr parse_expression_list();
    [[gnu::noinline]] ValuePtr continue_expression_list(ValuePtr first);
    ValuePtr parse_assignment_expression();
    [[gnu::noinline]] ValuePtr continue_assignment(ValuePtr left);
    ValuePtr parse_conditional_expression();
    [[gnu::noinline]] ValuePtr continue_conditional(ValuePtr condition);
    ValuePtr parse_binary_expression(int limit);
    [[gnu::noinline]] ValuePtr continue_binary(ValuePtr left, int limit);
    ValuePtr parse_prefix_expression();
    [[gnu::noinline]] ValuePtr parse_prefix_operation();
    ValuePtr parse_postfix_expression();
    [[gnu::noinline]] ValuePtr continue_postfix(ValuePtr operand);
    ValuePtr parse_primary_expression();
    [[gnu::noinline]] ValuePtr parse_bracketed_expression();
    ValuePtr parse_string_value();
    ValuePtr parse_reference();
    ValuePtr parse_reference_or_call();
    ValuePtr parse_keyword_combination();
    ValuePtr parse_operator();

    // ---- Lists and conditionals (parse_conditionals.cpp) -----------------------------------
    // The lists of the attribute grammars. Each has a row in list_grammars: how one entry is
    // read, whether its plain form is one entry or a comma-separated list of them, what a
    // branch of IF or SELECT holds and what starts an entry there, and the warning for a
    // comma before the end.
    enum class List : std::uint8_t {
        VALUES, DATA_ITEMS, ACTIONS, ELEMENTS, MEMBERS, RESPONSE_CODES, MENU_ITEMS, PURPOSES, ROLES, ENUMERATORS,
        VECTORS, POINTS, METHOD_PARAMETERS,
    };
    struct ListGrammar;
    static const ListGrammar list_grammars[];
    static const ListGrammar& grammar(List list);

    ValuePtr parse_conditional(List list);
    ValuePtr parse_if(List list);
    ValuePtr parse_select(List list);
    ValuePtr parse_conditional_head(Word keyword);
    ValuePtr parse_branch(List list);
    ValuePtr parse_sequence(List list);
    ValuePtr parse_braced_sequence(List list);
    ValuePtr parse_list(List list);
    bool starts_entry(List list) const;
    void skip_trailing_semicolon();

    // ---- Attribute grammars (parse_attributes.cpp) ------------------------------------
    ValuePtr parse_plain_value();
    ValuePtr parse_method_definition();
    ValuePtr parse_method_type();
    ValuePtr parse_method_parameter();
    ValuePtr parse_type_specification();
    void parse_type_body(TypeValue& type, bool enumerated);
    void add_enumerators(TypeValue& type, ValuePtr enumerators);
    ValuePtr parse_enumerator();
    ValuePtr parse_keyword_set_combination(WordSet words);
    ValuePtr parse_menu_item();
    ValuePtr parse_menu_item_qualifiers();
    ValuePtr parse_purpose();
    ValuePtr parse_role();
    ValuePtr parse_word_list_attribute(List list);
    ValuePtr parse_response_codes_attribute();
    ValuePtr parse_response_code();
    ValuePtr parse_element();
    ValuePtr parse_member();
    ValuePtr parse_transaction();
    ValuePtr parse_data_items();
    ValuePtr parse_data_item();
    ValuePtr parse_action();
    ValuePtr parse_waveform_type();
    void parse_waveform_statement(TypeValue& type, bool yt);
    ValuePtr parse_braced_points();
    ValuePtr parse_point_value();
    ValuePtr parse_key_points();
    ValuePtr parse_vector();

    std::string file_name_;
    Description description_;
    const Profile& profile_;
    std::vector<std::string> include_paths_;
    InputFiles& files_;
    // The files being read, outermost first, as canonical paths; shared with nested parsers
    // so that a file importing itself, directly or not, is caught.
    std::shared_ptr<std::vector<std::string>> import_chain_;
    std::shared_ptr<ImportedFiles> imported_files_ = std::make_shared<ImportedFiles>();
    std::vector<CodeToken> code_tokens_;  // a method body being read, texts still in the sources
    std::vector<ValuePtr> list_entries_;  // the entries of the lists being read, innermost last
    std::vector<Attribute> composed_fields_;  // the same for the structured entries being read
    // The keyword values made so far, by word: nothing changes a value once made, so one
    // serves every use of its word (a fifth of a large description's values are keywords).
    std::vector<ValuePtr> keyword_values_;
    // The attributes of the item being read, until it is kept with room for exactly them:
    // the buffer serves item after item, released when each is kept.
    alignas(std::max_align_t) std::byte item_slot_buffer_[4096];
    std::pmr::monotonic_buffer_resource item_slots_{item_slot_buffer_, sizeof item_slot_buffer_};
    ParseObserver* observer_ = nullptr;
};

}  // namespace edd
