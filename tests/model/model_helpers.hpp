// Helpers shared by the model tests: short builders for values and tokens, and a way to
// name the exception that an operation throws.
#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

#include "diagnostics/exceptions.hpp"
#include "frontend/token.hpp"
#include "frontend/token_kind.hpp"
#include "model/simple_value.hpp"
#include "model/value.hpp"
#include "model/value_list.hpp"

namespace edd::model_test {

inline ValuePtr simple(ValueKind kind, std::string text) { return make_value<SimpleValue>(kind, std::move(text)); }
inline ValuePtr str(std::string text) { return simple(ValueKind::STRING, std::move(text)); }
inline ValuePtr dict(std::string key) { return simple(ValueKind::DICTIONARY_REFERENCE, std::move(key)); }
inline ValuePtr integer(std::string text) { return simple(ValueKind::INTEGER, std::move(text)); }
inline ValuePtr ident(std::string text) { return simple(ValueKind::IDENTIFIER, std::move(text)); }
inline ValuePtr keyword(std::string text) { return simple(ValueKind::KEYWORD, std::move(text)); }
inline ValuePtr op(std::string text) { return simple(ValueKind::OPERATOR, std::move(text)); }

// A list value holding the given items (each stored as a clone, as add() does).
template <class... Items>
ValuePtr list_of(const Items&... items) {
    ValuePtr list = make_value<ValueList>();
    (static_cast<ValueList&>(*list).add(items), ...);
    return list;
}

inline ValueList& as_list(const ValuePtr& value) { return static_cast<ValueList&>(*value); }

inline Token ident_token(std::string text) { return Token(IDENTIFIER, std::move(text)); }
inline Token string_token(std::string text) { return Token(STRING, std::move(text)); }
inline Token punct(char c) { return Token(static_cast<std::uint32_t>(static_cast<unsigned char>(c)), std::string(1, c)); }

// "<class>: <message>" of what the call throws, just "NullPointer" for that class, or
// "nothing". The classes are tested from the
// most derived, so an invalid_argument is never reported as a plain logic_error.
template <class F>
std::string outcome(F&& call) {
    try {
        std::forward<F>(call)();
    } catch (const NullPointer&) {
        return "NullPointer";  // its message is nobody's concern
    } catch (const std::invalid_argument& e) {
        return std::string("invalid_argument: ") + e.what();
    } catch (const std::out_of_range& e) {
        return std::string("out_of_range: ") + e.what();
    } catch (const std::logic_error& e) {
        return std::string("logic_error: ") + e.what();
    } catch (const std::exception& e) {
        return std::string("exception: ") + e.what();
    } catch (...) {
        return "unknown exception";
    }
    return "nothing";
}

}  // namespace edd::model_test
