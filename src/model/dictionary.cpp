// SPDX-License-Identifier: Apache-2.0
#include "model/dictionary.hpp"

#include <stdexcept>

#include "diagnostics/format.hpp"
#include "diagnostics/messages.hpp"

namespace edd {

std::string to_string(const DictionaryEntry& entry) { return "[0, 0] " + entry.key + " \"" + entry.text + '"'; }

const DictionaryEntry& Dictionary::entry(std::string_view key) const {
    auto it = first_.find(std::string(key));
    if (it == first_.end()) throw std::invalid_argument(format_message(messages::key_not_defined, {key, name_}));
    return entries_[it->second];
}

void Dictionary::add(DictionaryEntry entry) {
    if (contains(entry.key))
        throw std::invalid_argument(format_message(messages::key_defined_twice, {entry.key, name_}));
    append(std::move(entry));
}

// No reserve of the exact sum here: merging file after file would then copy everything
// merged so far once per file. The vector's own growth keeps the merge linear.
void Dictionary::append_all(Dictionary&& other) {
    for (DictionaryEntry& entry : other.entries_) append(std::move(entry));
    other.entries_.clear();
    other.first_.clear();
}

void Dictionary::append(DictionaryEntry entry) {
    first_.try_emplace(entry.key, entries_.size());
    entries_.push_back(std::move(entry));
}

}  // namespace edd
