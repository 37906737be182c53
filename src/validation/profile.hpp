// SPDX-License-Identifier: Apache-2.0
// Validation profiles: which EDDL dialect a description is checked against. The driver
// picks one by the -p text; the parser holds it for the whole run and words the refusals.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/item_type.hpp"

namespace edd {

struct Identification;

class Profile {
public:
    virtual ~Profile() = default;
    // For messages: "Object of type %0 is not allowed in %1." and the like.
    virtual std::string_view name() const = 0;
    virtual bool allows_item(ItemType type) const = 0;
    virtual bool allows_attribute(ItemType type, AttributeId id) const = 0;
    // The description file an IMPORT by identification reads; empty when there is none.
    virtual std::string import_file(const Identification& identification,
                                    const std::vector<std::string>& include_paths) const = 0;

protected:
    Profile() = default;
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;
};

class ProfibusProfile final : public Profile {
public:
    std::string_view name() const override { return "PROFIBUS"; }
    bool allows_item(ItemType) const override { return true; }
    bool allows_attribute(ItemType type, AttributeId id) const override;
    // mmmm/tttt/rrrr/mmmm_tttt_rrrr_dddd.ddl in four-digit hex; the disk is not consulted.
    std::string import_file(const Identification& identification,
                            const std::vector<std::string>& include_paths) const override;
};

class HartProfile final : public Profile {
public:
    std::string_view name() const override { return "HART"; }
    bool allows_item(ItemType type) const override;
    bool allows_attribute(ItemType type, AttributeId id) const override;
    // mm/tt/rrdd/ joined with the first *.ddl file, in name order, of that directory below
    // the first include path that has one, else below the current directory. Throws
    // std::runtime_error when the manufacturer or device type is not an integer.
    std::string import_file(const Identification& identification,
                            const std::vector<std::string>& include_paths) const override;
};

class NullProfile final : public Profile {
public:
    std::string_view name() const override { return "null"; }
    bool allows_item(ItemType) const override { return true; }
    bool allows_attribute(ItemType, AttributeId) const override { return true; }
    std::string import_file(const Identification&, const std::vector<std::string>&) const override { return {}; }
};

// "PROFIBUS" and "HART" (exactly, case-sensitive) pick their profile; any other text the
// null profile. The three profiles live for the whole process.
const Profile& select_profile(std::string_view name);

}  // namespace edd
