// Profiles: representative refusals, the PROFIBUS import path and the HART library search.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "model/identification.hpp"
#include "model/simple_value.hpp"
#include "validation/profile.hpp"

namespace edd {
namespace {

namespace fs = std::filesystem;

ValuePtr integer(std::string text) { return make_value<SimpleValue>(ValueKind::INTEGER, std::move(text)); }

Identification identification(std::string manufacturer, std::string device_type, std::string device_revision,
                              std::string dd_revision) {
    Identification id;
    id.manufacturer = integer(std::move(manufacturer));
    id.device_type = integer(std::move(device_type));
    id.device_revision = integer(std::move(device_revision));
    id.dd_revision = integer(std::move(dd_revision));
    return id;
}

TEST(Profile, RefusalsDifferByDialect) {
    const HartProfile hart;
    const ProfibusProfile profibus;
    const NullProfile null;
    struct Case {
        ItemType type;
        AttributeId attribute;
        bool hart, profibus;
    };
    const Case cases[] = {
        {ItemType::COMMAND, AttributeId::NUMBER, true, false},
        {ItemType::COMMAND, AttributeId::SLOT, false, true},
        {ItemType::COMMAND, AttributeId::INDEX, false, true},
        {ItemType::COMMAND, AttributeId::HEADER, false, false},
        {ItemType::COMMAND, AttributeId::MODULE, false, false},
        {ItemType::COMMAND, AttributeId::TRANSACTION, true, true},
        {ItemType::BLOCK, AttributeId::HEADER, true, true},  // refusals are for commands only
        {ItemType::VARIABLE, AttributeId::NUMBER, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(name_of(c.type)) + " " + std::string(name_of(c.attribute)));
        EXPECT_EQ(hart.allows_attribute(c.type, c.attribute), c.hart);
        EXPECT_EQ(profibus.allows_attribute(c.type, c.attribute), c.profibus);
        EXPECT_TRUE(null.allows_attribute(c.type, c.attribute));
    }
    for (ItemType type : {ItemType::VARIABLE_LIST, ItemType::CONNECTION, ItemType::RESPONSE_CODES}) {
        EXPECT_FALSE(hart.allows_item(type)) << type;
        EXPECT_TRUE(profibus.allows_item(type)) << type;
        EXPECT_TRUE(null.allows_item(type)) << type;
    }
    EXPECT_TRUE(hart.allows_item(ItemType::COMMAND));
}

TEST(Profile, ProfibusImportPathIsBuiltFromTheNumbers) {
    const ProfibusProfile profibus;
    EXPECT_EQ(profibus.import_file(identification("0x1A", "0x30", "1", "2"), {}),
              "001a/0030/0001/001a_0030_0001_0002.ddl");
    EXPECT_EQ(profibus.import_file(identification("0x12345", "0", "0xFFFF", "017"), {"lib"}),
              "12345/0000/ffff/12345_0000_ffff_000f.ddl");
}

TEST(Profile, NullProfileImportsNothing) {
    EXPECT_EQ(NullProfile().import_file(identification("1", "2", "3", "4"), {"."}), "");
}

// A scratch tree below the system's temporary directory, removed afterwards.
class HartProfileImport : public testing::Test {
protected:
    void SetUp() override {
        root_ = fs::temp_directory_path() /
                ("tarnwick_hart_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()));
        fs::remove_all(root_);
        fs::create_directories(root_);
    }
    void TearDown() override {
        fs::current_path(original_directory_);
        fs::remove_all(root_);
    }
    void touch(const std::string& relative) {
        const fs::path path = root_ / relative;
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "\n";
    }
    std::string path(const std::string& relative) const { return (root_ / relative).string(); }

    const HartProfile hart_{};
    const Identification device_ = identification("0x26", "7", "1", "2");  // 26/07/0102/
    const fs::path original_directory_ = fs::current_path();
    fs::path root_;
};

TEST_F(HartProfileImport, FirstFileInNameOrderWins) {
    touch("lib/26/07/0102/zeta.ddl");
    touch("lib/26/07/0102/beta.ddl");
    touch("lib/26/07/0102/alpha.txt");
    touch("lib/26/07/0102/gamma.ddl");
    fs::create_directories(root_ / "lib/26/07/0102/aaa.ddl");  // a directory, not a file
    EXPECT_EQ(hart_.import_file(device_, {path("lib")}), "26/07/0102/beta.ddl");
}

TEST_F(HartProfileImport, FirstIncludePathWithAMatchWins) {
    touch("empty/26/07/0102/other.txt");
    touch("second/26/07/0102/b.ddl");
    touch("third/26/07/0102/a.ddl");
    touch("26/07/0102/current.ddl");
    fs::current_path(root_);
    EXPECT_EQ(hart_.import_file(device_, {path("missing"), path("empty"), path("second"), path("third")}),
              "26/07/0102/b.ddl");
}

TEST_F(HartProfileImport, FallsBackToTheCurrentDirectory) {
    touch("lib/26/07/0101/wrong_revision.ddl");
    touch("26/07/0102/here.ddl");
    fs::current_path(root_);
    EXPECT_EQ(hart_.import_file(device_, {path("lib")}), "26/07/0102/here.ddl");
}

TEST_F(HartProfileImport, NothingFoundGivesEmpty) {
    fs::current_path(root_);
    EXPECT_EQ(hart_.import_file(device_, {path("lib"), ""}), "");
}

TEST_F(HartProfileImport, NumbersAboveTwoDigitsAreWrittenWhole) {
    touch("lib/100/1ff/0a10/dev.ddl");
    EXPECT_EQ(hart_.import_file(identification("256", "0x1FF", "10", "16"), {path("lib")}),
              "100/1ff/0a10/dev.ddl");
}

TEST_F(HartProfileImport, ManufacturerAndDeviceTypeMustBeIntegers) {
    Identification by_name = device_;
    by_name.manufacturer = make_value<SimpleValue>(ValueKind::IDENTIFIER, "acme");
    Identification unset_type = device_;
    unset_type.device_type = ValuePtr();
    for (const Identification* id : {&by_name, &unset_type}) {
        try {
            hart_.import_file(*id, {path("lib")});
            ADD_FAILURE() << "no exception";
        } catch (const std::runtime_error& e) {
            EXPECT_STREQ(e.what(), "No Identifiers supported.");
        }
    }
}

}  // namespace
}  // namespace edd
