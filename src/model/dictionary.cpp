#include "model/dictionary.hpp"

#include <stdexcept>

namespace edd {

std::string to_string(const DictionaryEntry& entry) { return "[0, 0] " + entry.key + " \"" + entry.text + '"'; }

const DictionaryEntry& Dictionary::entry(std::string_view key) const {
    auto it = first_.find(std::string(key));
    if (it == first_.end()) throw std::invalid_argument(std::string(key) + " is not defined in dictionary " + name_);
    return entries_[it->second];
}

void Dictionary::add(DictionaryEntry entry) {
    if (contains(entry.key)) throw std::invalid_argument(entry.key + " is already defined in dictionary " + name_);
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
