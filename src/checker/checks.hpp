// SPDX-License-Identifier: Apache-2.0
// The checks, one row each: the name --checks and the findings use, the finding's text
// with its placeholders, whether it runs without being asked for, and a line for
// --list-checks. The order is the order of --list-checks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

namespace edd {

enum class CheckId : std::uint8_t {
    undefined_reference,
    undefined_member,
    wrong_item_type,
    undefined_dictionary_key,
    missing_language,
    unreadable_image,
    unsafe_image_path,
    unreadable_source,
    unreferenced_item,
    no_top_menu,
    second_top_menu,
};

struct Check {
    CheckId id;
    std::string_view name;
    std::string_view message;  // %0, %1, ... filled by the check
    bool on_by_default;
    std::string_view summary;
};

inline constexpr Check checks[] = {
    {CheckId::undefined_reference, "undefined-reference", "%0 is not defined (%1 of %2)", true,
     "a reference to an item that is not defined, LIKE bases included"},
    {CheckId::undefined_member, "undefined-member", "%0 has no member %1 (%2 of %3)", true,
     "NAME.MEMBER where the item NAME has MEMBERS, none of them MEMBER"},
    {CheckId::wrong_item_type, "wrong-item-type", "%0 is a %1, which cannot stand in %2 of %3 (expected %4)", true,
     "a reference to an item of a type that cannot stand there: a menu entry naming a command, say"},
    {CheckId::undefined_dictionary_key, "undefined-dictionary-key", "[%0] has no text in the dictionaries", true,
     "a dictionary key with no text in the -d files (only when -d is given)"},
    {CheckId::missing_language, "missing-language", "%0 has no text in %1, which other texts have", false,
     "a label, help or description without a language that other texts of the description have"},
    {CheckId::unreadable_image, "unreadable-image", "image file %0 cannot be opened (IMAGE %1)", true,
     "an image file that cannot be opened; the converter leaves it out of the document"},
    {CheckId::unsafe_image_path, "unsafe-image-path",
     "image path %0 leaves the description's directories: the converter embeds whatever file it names", true,
     "an image path that is absolute or climbs out with '..'"},
    {CheckId::unreadable_source, "unreadable-source", "the converter reads nothing from here on: %0", true,
     "a source the lexer cannot read to its end: UTF-16 or UTF-32 text, a byte 0xFF"},
    {CheckId::unreferenced_item, "unreferenced-item", "%0 %1 is referenced nowhere, and no top menu reaches it", false,
     "an item nothing names (commands, relations, blocks and connections stand alone and are left out)"},
    {CheckId::no_top_menu, "no-top-menu", "the description has no top menu: no MENU that no other menu names", true,
     "no MENU that no other menu names (or no MENU at all)"},
    {CheckId::second_top_menu, "second-top-menu", "%0 is a second top menu beside %1: no other menu names it", true,
     "more than one MENU that no other menu names"},
};
inline constexpr std::size_t check_count = std::size(checks);

constexpr const Check& check_of(CheckId id) { return checks[static_cast<std::size_t>(id)]; }
static_assert([] {
    for (std::size_t i = 0; i < check_count; ++i)
        if (static_cast<std::size_t>(checks[i].id) != i) return false;
    return true;
}(), "the rows are in CheckId order");

// The row of that name, if any.
std::optional<CheckId> find_check(std::string_view name);

}  // namespace edd
