// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <deque>
#include <optional>
#include <unordered_map>
#include <map>
#include <stdexcept>
#include <typeinfo>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"
#include "diagnostics/type_name.hpp"
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

}  // namespace

// The items an import takes over, in import order, findable by name through an index: an
// item may be selected twice (EVERYTHING, then by name), and a lookup finds the first of
// them that is still there, as REDEFINE and DELETE expect. The items are those of the
// imported file's table, shared with every other IMPORT of it; one that is redefined is
// first copied for this import alone.
class Parser::ImportSet {
public:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    void add(const Item& item) {
        const std::size_t at = items_.size();
        items_.push_back(&item);
        redefined_.push_back(nullptr);
        removed_.push_back(false);
        next_.push_back(none);
        auto [chain, inserted] = chains_.try_emplace(item.name(), Chain{at, at});
        if (inserted) return;
        // Every selection comes before the first DELETE: a chain's head is never gone yet.
        next_[chain->second.last] = at;
        chain->second.last = at;
    }
    // The first selection of the name still there, or none. What is removed never comes
    // back, so the chain's head moves past it for good: a name selected and deleted many
    // times costs no more than once each.
    std::size_t find(std::string_view name) {
        auto it = chains_.find(name);
        if (it == chains_.end()) return none;
        std::size_t& first = it->second.first;
        while (first != none && removed_[first]) first = next_[first];
        return first;
    }
    const Item& item(std::size_t at) const { return *items_[at]; }
    // The selection's own copy, for a REDEFINE.
    Item& own(std::size_t at) {
        if (redefined_[at] == nullptr) {
            redefined_[at] = &copies_.emplace_back(*items_[at]);
            items_[at] = redefined_[at];
        }
        return *redefined_[at];
    }
    void remove(std::size_t at) { removed_[at] = true; }
    std::size_t size() const { return items_.size(); }  // the removed ones included

    template <class F>
    void for_each(F&& f) const {
        for (std::size_t at = 0; at < items_.size(); ++at)
            if (!removed_[at]) f(*items_[at]);
    }

private:
    struct Chain {
        std::size_t first;  // the first item of the name still there, or none
        std::size_t last;
    };
    std::vector<const Item*> items_;
    std::vector<Item*> redefined_;  // this import's copy, or null
    std::deque<Item> copies_;       // a deque: the copies stay where they are
    std::vector<bool> removed_;
    std::vector<std::size_t> next_;  // the next item of the same name, or none
    std::unordered_map<std::string_view, Chain> chains_;
};

// import : IMPORT ( string | identification ) [ '{' import_list [ redefinitions ] '}' ]
void Parser::parse_import() {
    expect("IMPORT");
    std::string name;
    if (at_kind(STRING)) {
        advance();
        name = consumed().text();
    } else {
        Identification identification;
        parse_identification(identification);
        name = profile_.import_file(identification, include_paths_);
    }
    const std::string path = name.empty() ? std::string() : resolve_import(name, include_paths_);
    if (path.empty()) fatal(format_message(messages::import_not_found, {name}));
    const std::shared_ptr<const ImportedFile> imported = imported_file(name, path);

    ImportSet selected;
    if (accept("{")) {
        parse_import_list(imported->items, selected);
        if (at("REDEFINITIONS")) parse_redefinitions(selected);
        expect("}");
    }
    // An imported name that is taken already is not counted as an error: the first stays.
    description_.items.reserve(description_.items.size() + selected.size());
    selected.for_each([this](const Item& item) {
        if (const Item* first = description_.items.find(item.name())) {
            diagnostics().duplicate_object(item.origin().file_name(), item.origin().line, item.name(),
                                           first->origin().file_name(), first->origin().line);
            return;
        }
        description_.items.insert(item);
    });
}

// The table of an imported file, converted at its first IMPORT in the run.
std::shared_ptr<const Parser::ImportedFile> Parser::imported_file(const std::string& name, const std::string& path) {
    const std::string canonical = canonical_path(path);
    if (std::ranges::find(*import_chain_, canonical) != import_chain_->end())
        fatal(format_message(messages::import_cycle, {name}));
    const std::optional<platform::FileInfo> file = InputFiles::inspect(path);
    if (!file) fatal(format_message(messages::import_not_found, {path}));
    if (auto it = imported_files_->find(file->id); it != imported_files_->end()) return it->second;
    // Each imported file is parsed one level deeper on the stack.
    if (import_chain_->size() > max_import_depth || imported_files_->size() >= max_imports)
        fatal(messages::nesting_too_deep);
    import_chain_->push_back(canonical);
    auto table = std::make_shared<const ImportedFile>(ImportedFile{description_.arena, parse_imported_file(path)});
    import_chain_->pop_back();
    imported_files_->emplace(file->id, table);
    return table;
}

// The imported file is converted on its own, with the same include paths, profile and
// diagnostics; its problems count as ours.
ItemTable Parser::parse_imported_file(const std::string& path) {
    std::optional<SourceText> text;
    try {
        text = files_.read_source(path);
    } catch (const FileTooLarge& e) {
        fatal(e.what());
    }
    if (!text) fatal(format_message(messages::import_not_found, {path}));
    Lexer lexer(Lexer::FromText{}, std::move(*text), path, diagnostics());
    Preprocessor preprocessor(lexer, include_paths_, files_, diagnostics());
    Parser nested(preprocessor, path, profile_, include_paths_, files_, diagnostics());
    nested.description_.arena = description_.arena;  // its items become ours
    nested.import_chain_ = import_chain_;
    nested.imported_files_ = imported_files_;
    nested.observer_ = observer_;
    const int errors_before = get_error_count();
    const bool parsed = nested.parse();
    // A fault reported on standard error counts no error of its own; it still fails the parse.
    if (!parsed && get_error_count() == errors_before) diagnostics().count_error();
    return std::move(nested.description_.items);
}

// import_list : { EVERYTHING ';' | identifier [';'] | plural_keyword [';'] }
void Parser::parse_import_list(const ItemTable& imported, ImportSet& selected) {
    while (!at("}") && !at("REDEFINITIONS") && !at_end()) {
        advance();
        const Token entry = consumed();
        if (entry.text() == "EVERYTHING") {
            expect(";");
            for (const Item& item : imported.items()) selected.add(item);
            continue;
        }
        if (is_plural_entry(entry)) {
            auto it = import_keywords().find(entry.text());
            // Reported as the converter's fault, in the words of a standard exception.
            if (it == import_keywords().end())
                fault(messages::invalid_import_id, readable_type_name(typeid(std::invalid_argument)));
            for (const Item* item : imported.of_type(find_item_type(it->second))) selected.add(*item);
        } else if (const Item* item = imported.find(entry.text())) {
            selected.add(*item);
        } else {
            diagnostics().line(format_message(messages::import_object_missing, {entry.text()}));
        }
        if (!accept(";")) accept(",");
    }
}

// redefinitions : REDEFINITIONS '{' { [REDEFINE] item_type name body | DELETE item_type name ';' } '}'
void Parser::parse_redefinitions(ImportSet& selected) {
    expect("REDEFINITIONS");
    expect("{");
    while (!at("}")) {
        if (accept("DELETE")) {
            const ItemType type = find_item_type(read_identifier(false));
            const std::string name(read_identifier(false));
            expect(";");
            const std::size_t at = selected.find(name);
            if (at == ImportSet::none) error(messages::delete_missing);
            else if (selected.item(at).type() != type) error(messages::delete_wrong_type);
            else selected.remove(at);
            continue;
        }
        if (!at("REDEFINE") && find_item_type(peek().text()) == ItemType::UNKNOWN) {
            advance();
            fatal_at_consumed(messages::expected_redefinition);
        }
        accept("REDEFINE");
        const ItemType type = find_item_type(read_identifier(false));
        const std::string name(read_identifier(false));
        const std::size_t at = selected.find(name);
        if (at != ImportSet::none && selected.item(at).type() == type) {
            Item& item = selected.own(at);
            unshare_merged_lists(item);
            parse_item_body(item);
            continue;
        }
        error(at == ImportSet::none ? messages::redefine_missing : messages::redefine_wrong_type);
        Item discarded(*description_.arena, type, name, Position{consumed().file(), consumed().line()});
        parse_item_body(discarded);  // the body is still read, so parsing goes on
    }
    expect("}");
}

}  // namespace edd
