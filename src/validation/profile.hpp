// Validation profiles: which EDDL dialect a description is checked against. The driver
// picks one by the -p text; the parser holds it for the whole run.
#pragma once

#include <string_view>

namespace edd {

class Profile {
public:
    virtual ~Profile() = default;
    virtual std::string_view name() const = 0;

protected:
    Profile() = default;
    Profile(const Profile&) = delete;
    Profile& operator=(const Profile&) = delete;
};

class ProfibusProfile final : public Profile {
public:
    std::string_view name() const override { return "PROFIBUS"; }
};

class HartProfile final : public Profile {
public:
    std::string_view name() const override { return "HART"; }
};

class NullProfile final : public Profile {
public:
    std::string_view name() const override { return "null"; }
};

// "PROFIBUS" and "HART" (exactly, case-sensitive) pick their profile; any other text the
// null profile. The three profiles live for the whole process.
const Profile& select_profile(std::string_view name);

}  // namespace edd
