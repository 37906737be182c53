#include <algorithm>
#include <map>
#include <stdexcept>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "files/input_files.hpp"
#include "frontend/lexer.hpp"
#include "frontend/preprocessor.hpp"
#include "parser/canonical_path.hpp"
#include "parser/parser.hpp"

namespace edd {

namespace {

// Plural keywords of import lists. The table differs from the item types on purpose (it
// has DOMAIN, PROGRAM, RELATION and RESPONSE_CODE, and lacks GRID and IMAGE).
const std::map<std::string, std::string, std::less<>>& import_keywords() {
    static const std::map<std::string, std::string, std::less<>> map = {
        {"ARRAYS", "ARRAY"}, {"AXES", "AXIS"}, {"BLOCKS", "BLOCK"}, {"CHARTS", "CHART"},
        {"COLLECTIONS", "COLLECTION"}, {"COMMANDS", "COMMAND"}, {"CONNECTIONS", "CONNECTION"},
        {"DOMAINS", "DOMAIN"}, {"EDIT_DISPLAYS", "EDIT_DISPLAY"}, {"FILES", "FILE"}, {"GRAPHS", "GRAPH"},
        {"ITEM_ARRAYS", "ITEM_ARRAY"}, {"LISTS", "LIST"}, {"MENUS", "MENU"}, {"METHODS", "METHOD"},
        {"PROGRAMS", "PROGRAM"}, {"RECORDS", "RECORD"}, {"REFRESHS", "REFRESH"}, {"RELATIONS", "RELATION"},
        {"RESPONSE_CODES", "RESPONSE_CODE"}, {"SOURCES", "SOURCE"}, {"UNITS", "UNIT"}, {"VARIABLES", "VARIABLE"},
        {"VARIABLE_LISTS", "VARIABLE_LIST"}, {"WAVEFORMS", "WAVEFORM"}, {"WRITE_AS_ONES", "WRITE_AS_ONE"},
    };
    return map;
}

// A word that names a kind of item rather than one item: a keyword, a plural of the table,
// or the plural of an item type that the table lacks (which is then refused).
bool is_plural_entry(const Token& token) {
    const std::string_view text = token.text();
    if (token.is(EDDL_KEYWORD) || import_keywords().contains(text)) return true;
    return text.size() > 1 && text.back() == 'S' && find_item_type(text.substr(0, text.size() - 1)) != ItemType::UNKNOWN;
}

// The first include path under which the name can be opened; empty when none.
std::string resolve_import(const std::string& name, const std::vector<std::string>& include_paths) {
    for (const std::string& path : include_paths) {
        std::string candidate = path + "/" + name;
        if (InputFiles::readable(candidate)) return candidate;
    }
    return std::string();
}

std::vector<Item>::iterator find_item(std::vector<Item>& items, std::string_view name) {
    return std::ranges::find_if(items, [&](const Item& item) { return item.name() == name; });
}

}  // namespace

// import : IMPORT ( string | identification ) [ '{' import_list [ redefinitions ] '}' ]
void Parser::parse_import() {
    expect("IMPORT");
    std::string name;
    if (at_kind(STRING)) {
        advance();
        name = current().text();
    } else {
        Identification identification;
        parse_identification(identification);
        name = profile_.import_file(identification, include_paths_);
    }
    const std::string path = name.empty() ? std::string() : resolve_import(name, include_paths_);
    if (path.empty()) fatal(format_message(messages::import_not_found, {name}));
    ItemTable imported = parse_imported_file(name, path);

    std::vector<Item> import_set;
    if (at("{")) {
        expect("{");
        import_set = parse_import_list(imported);
        if (at("REDEFINITIONS")) parse_redefinitions(import_set);
        expect("}");
    }
    // An imported name that is taken already is not counted as an error: the first stays.
    for (Item& item : import_set) {
        if (description_.items.contains(item.name())) {
            const Item& first = description_.items.get(item.name());
            diagnostics().duplicate_object(item.origin().file_name(), item.origin().line(), item.name(),
                                           first.origin().file_name(), first.origin().line());
            continue;
        }
        description_.items.insert(std::move(item));
    }
}

// The imported file is converted on its own, with the same include paths, profile and
// diagnostics; its problems count as ours.
ItemTable Parser::parse_imported_file(const std::string& name, const std::string& path) {
    const std::string canonical = canonical_path(path);
    if (std::ranges::find(*import_chain_, canonical) != import_chain_->end())
        fatal(format_message(messages::import_cycle, {name}));
    // Each imported file is parsed one level deeper on the stack.
    if (import_chain_->size() > max_import_depth) fatal(messages::nesting_too_deep);
    if (++*imports_converted_ > max_imports) fatal(messages::nesting_too_deep);
    std::optional<std::string> text;
    try {
        text = files_.read(path);
    } catch (const FileTooLarge& e) {
        fatal(e.what());
    }
    if (!text) fatal(format_message(messages::import_not_found, {path}));
    Lexer lexer(Lexer::FromText{}, std::move(*text), path, diagnostics());
    Preprocessor preprocessor(lexer, include_paths_, files_, diagnostics());
    Parser nested(preprocessor, path, profile_, include_paths_, files_, diagnostics());
    nested.import_chain_ = import_chain_;
    nested.imports_converted_ = imports_converted_;
    import_chain_->push_back(canonical);
    const int errors_before = get_error_count();
    const bool parsed = nested.parse();
    import_chain_->pop_back();
    // A fault reported on standard error counts no error of its own; it still fails the parse.
    if (!parsed && get_error_count() == errors_before) diagnostics().count_error();
    return std::move(nested.description_.items);
}

// import_list : { EVERYTHING ';' | identifier [';'] | plural_keyword [';'] }
std::vector<Item> Parser::parse_import_list(const ItemTable& imported) {
    std::vector<Item> selected;
    while (!at("}") && !at("REDEFINITIONS") && !at_end()) {
        advance();
        const Token entry = current();
        if (entry.text() == "EVERYTHING") {
            expect(";");
            selected.insert(selected.end(), imported.items().begin(), imported.items().end());
            continue;
        }
        if (is_plural_entry(entry)) {
            auto it = import_keywords().find(entry.text());
            if (it == import_keywords().end()) throw std::invalid_argument(std::string(messages::invalid_import_id));
            for (const Item* item : imported.of_type(find_item_type(it->second))) selected.push_back(*item);
        } else if (imported.contains(entry.text())) {
            selected.push_back(imported.get(entry.text()));
        } else {
            diagnostics().line(concat({messages::import_object_missing, entry.text()}));
        }
        if (at(";") || at(",")) advance();
    }
    return selected;
}

// redefinitions : REDEFINITIONS '{' { [REDEFINE] item_type name body | DELETE item_type name ';' } '}'
void Parser::parse_redefinitions(std::vector<Item>& import_set) {
    expect("REDEFINITIONS");
    expect("{");
    while (!at("}")) {
        if (at("DELETE")) {
            advance();
            const ItemType type = find_item_type(parse_identifier(false));
            const std::string name = parse_identifier(false);
            expect(";");
            auto it = find_item(import_set, name);
            if (it == import_set.end()) error(messages::delete_missing);
            else if (it->type() != type) error(messages::delete_wrong_type);
            else import_set.erase(it);
            continue;
        }
        if (!at("REDEFINE") && find_item_type(lookahead().text()) == ItemType::UNKNOWN) {
            advance();
            fatal(format_message(messages::expected_redefinition, {current().text()}));
        }
        if (at("REDEFINE")) advance();
        const ItemType type = find_item_type(parse_identifier(false));
        const std::string name = parse_identifier(false);
        auto it = find_item(import_set, name);
        if (it != import_set.end() && it->type() == type) {
            parse_item_body(*it);
            continue;
        }
        error(it == import_set.end() ? messages::redefine_missing : messages::redefine_wrong_type);
        Item discarded(type, name, current());  // the body is still read, so parsing goes on
        parse_item_body(discarded);
    }
    expect("}");
}

}  // namespace edd
