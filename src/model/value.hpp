// SPDX-License-Identifier: Apache-2.0
// The root of the model's value family and the handle through which values are held.
// Values live in their description's arena and die with it; a handle does not own its
// value. A value is built bottom-up and then belongs to the one value or item it was
// handed to: setters keep what they are given, and clone() makes the copies the model's
// copy rules describe.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "diagnostics/exceptions.hpp"
#include "model/arena.hpp"
#include "model/value_kind.hpp"

namespace edd {

class Value;

// A text that outlives every description (a word of the keyword table): values keep it as
// it is, without a copy or a lookup.
struct LastingText {
    std::string_view text;
};

// Dictionary keys in byte order, as the document lists them.
using KeySet = std::set<std::string, std::less<>>;

// Following a handle that holds no value throws NullPointer.
class ValuePtr {
public:
    ValuePtr() = default;
    ValuePtr(Value* value) : value_(value) {}  // values come from Arena::make

    bool is_set() const { return value_ != nullptr; }
    Value* get() const { return value_; }
    Value& operator*() const { return checked(); }
    Value* operator->() const { return &checked(); }

private:
    Value& checked() const {
        if (value_ == nullptr) throw NullPointer();
        return *value_;
    }
    Value* value_ = nullptr;
};

class Value {
public:
    ValueKind kind() const { return static_cast<ValueKind>(kind_); }
    // A copy in `arena`; what it shares with the original is each class's own rule.
    virtual ValuePtr clone(Arena& arena) const = 0;
    // EDDL-like source text.
    virtual std::string to_string() const = 0;
    // Adds the dictionary keys the value uses; only called where has_keys() says so.
    virtual void collect_dictionary_keys(KeySet& keys) const;
    // Whether collect_dictionary_keys finds a key: known from the parts as the value is
    // built, so that collecting visits only the values that hold keys.
    bool has_keys() const { return has_keys_; }

protected:
    explicit Value(ValueKind kind) : kind_(static_cast<std::uint8_t>(kind)) {}
    Value(const Value&) = default;
    Value& operator=(const Value&) = delete;
    ~Value() = default;  // never run: the arena goes as a whole

    void take_keys_of(const ValuePtr& part) { has_keys_ = has_keys_ || (part.is_set() && part.get()->has_keys_); }
    void set_has_keys(bool value) { has_keys_ = value; }

private:
    // A byte each: a derived class's first 32-bit field fits in the rest of the word
    // after the vtable pointer, which matters for the most frequent, smallest values.
    std::uint8_t kind_;
    bool has_keys_ = false;
};

// The keys of a value that holds some; nothing for an unset handle.
inline void collect_keys(const ValuePtr& value, KeySet& keys) {
    if (value.is_set() && value.get()->has_keys()) value.get()->collect_dictionary_keys(keys);
}

// The clone of a value, or a NullPointer for an unset handle.
inline ValuePtr clone_of(const ValuePtr& value, Arena& arena) { return value->clone(arena); }

}  // namespace edd
