// SPDX-License-Identifier: Apache-2.0
// The texts behind "[key]" references, loaded from the -d files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace edd {

struct DictionaryEntry {
    std::string key;
    std::string text;

    friend bool operator==(const DictionaryEntry&, const DictionaryEntry&) = default;
};

// The entry as dictionary source; the two numbers are always written as 0.
std::string to_string(const DictionaryEntry& entry);

class Dictionary {
public:
    explicit Dictionary(std::string name = std::string()) : name_(std::move(name)) {}

    const std::string& name() const { return name_; }
    std::size_t size() const { return entries_.size(); }
    bool contains(std::string_view key) const { return first_.contains(std::string(key)); }
    // The first entry with the key; an absent key throws std::invalid_argument.
    const DictionaryEntry& entry(std::string_view key) const;
    const std::string& text(std::string_view key) const { return entry(key).text; }
    // A key that is there already throws std::invalid_argument.
    void add(DictionaryEntry entry);
    // Appends without the duplicate check: lookups then find the earlier entry. The
    // entries are moved out of `other`.
    void append_all(Dictionary&& other);
    const std::vector<DictionaryEntry>& entries() const { return entries_; }

private:
    void append(DictionaryEntry entry);

    std::string name_;
    std::vector<DictionaryEntry> entries_;
    std::unordered_map<std::string, std::size_t> first_;  // key -> index of its first entry
};

}  // namespace edd
