// SPDX-License-Identifier: Apache-2.0
// A listener the parser tells where it read each value that names something: a reference,
// a dictionary key, a string. The converter sets none, so it pays one test per such value;
// the checker keeps the positions to point its findings at the very token.
#pragma once

#include "model/item.hpp"
#include "model/value.hpp"

namespace edd {

class ParseObserver {
public:
    virtual ~ParseObserver() = default;
    // `value` lives in the description's arena; `where` is its first token.
    virtual void value_read(const Value& value, Position where) = 0;

protected:
    ParseObserver() = default;
    ParseObserver(const ParseObserver&) = default;
    ParseObserver& operator=(const ParseObserver&) = default;
};

}  // namespace edd
