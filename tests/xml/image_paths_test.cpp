// Image paths collected from IMAGE items, and the image files the writer embeds: found next
// to the defining file or through an include path, or reported as missing.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "validation/image_paths.hpp"
#include "xml_test_helpers.hpp"

namespace edd {
namespace {

using namespace model_test;
using namespace xml_test;
using Paths = std::vector<std::pair<std::string, std::string>>;

TEST(ImagePaths, CollectsEveryPathAConditionCouldSelect) {
    ValuePtr select = select_value(ident("s"), {{integer("1"), str("c.png")}, {integer("2"), str("d.png")}});
    static_cast<SelectConditional&>(*select).set_default(str("e.png"));
    Paths paths;
    const ValuePtr conditional = if_value(ident("y"), str("a.png"));
    collect_paths(item_with(ItemType::IMAGE, "i1", {{AttributeId::PATH, conditional}}, "dir\\sub/f.ddl"), paths);
    collect_paths(item_with(ItemType::IMAGE, "i2", {{AttributeId::PATH, select}}, "f.ddl"), paths);
    EXPECT_EQ(paths, (Paths{{"dir\\sub", "a.png"}, {"./", "c.png"}, {"./", "d.png"}, {"./", "e.png"}}));
}

TEST(ImagePaths, RefusesWhatIsNoImagePath) {
    const char* not_string = "IMAGE.PATH may only be a string expression.";
    const struct Case {
        Item item;
        const char* message;
    } cases[] = {
        {item_with(ItemType::VARIABLE, "v", {{AttributeId::PATH, str("a")}}),
         "collect_paths can only handle IMAGE obejcts."},
        {item_with(ItemType::IMAGE, "i", {}), "IMAGE objects must have a PATH attribtue."},
        {item_with(ItemType::IMAGE, "i", {{AttributeId::PATH, dict("k")}}), not_string},
        {item_with(ItemType::IMAGE, "i", {{AttributeId::PATH, ident("p")}}), not_string},
        {item_with(ItemType::IMAGE, "i", {{AttributeId::PATH, if_else_value(ident("c"), str("a"), list_of(str("b")))}}),
         not_string},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.message);
        Paths paths;
        try {
            collect_paths(c.item, paths);
            ADD_FAILURE() << "no exception";
        } catch (const std::logic_error& e) {
            EXPECT_STREQ(e.what(), c.message);
        }
    }
}

class ImagePathFiles : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string test = ::testing::UnitTest::GetInstance()->current_test_info()->name();
        root_ = std::filesystem::temp_directory_path() / ("tarnwick_images_" + test);
        std::filesystem::create_directories(root_ / "src");
        std::filesystem::create_directories(root_ / "inc");
        write(root_ / "src" / "near.png", "foo");
        write(root_ / "inc" / "far.png", std::string("\0\xFF", 2));
    }
    void TearDown() override { std::filesystem::remove_all(root_); }

    static void write(const std::filesystem::path& file, const std::string& bytes) {
        std::ofstream(file, std::ios::binary) << bytes;
    }
    Description images(const std::vector<std::string>& paths) const {
        std::vector<Item> items;
        const std::string source = (root_ / "src" / "dev.ddl").string();
        for (const std::string& path : paths) {
            const std::string name = "i" + std::to_string(items.size());
            items.push_back(item_with(ItemType::IMAGE, name, {{AttributeId::PATH, str(path)}}, source));
        }
        return description_of(std::move(items));
    }

    std::filesystem::path root_;
};

TEST_F(ImagePathFiles, EmbedsFilesFoundNextToTheSourceOrThroughIncludePaths) {
    std::ostringstream errors;
    XML_Writer writer(images({"near.png", "far.png", "gone.png"}), {"/no/such/dir", (root_ / "inc").string()}, errors);
    writer.build();
    expect_well_formed(writer.xml());
    EXPECT_EQ(errors.str(), "Could not open related file gone.png.");
    const std::string items = R"(
        <IMAGE id="i0">
            <PATH>
                <string>near.png</string>
            </PATH>
        </IMAGE>
        <IMAGE id="i1">
            <PATH>
                <string>far.png</string>
            </PATH>
        </IMAGE>
        <IMAGE id="i2">
            <PATH>
                <string>gone.png</string>
            </PATH>
        </IMAGE>)";
    EXPECT_EQ(writer.xml(), document_with(items, R"(
    <image_files>
        <file path="near.png">Zm9v</file>
        <file path="far.png">AP8=</file>
    </image_files>)"));
}

TEST_F(ImagePathFiles, LooksAtTheRootWithTheDefaultPathList) {
    // The one empty include path makes the second candidate "/" + path.
    const std::string absolute_without_slash = (root_ / "inc" / "far.png").string().substr(1);
    std::ostringstream errors;
    XML_Writer found(images({absolute_without_slash}), errors);
    found.build();
    EXPECT_NE(found.xml().find("<file path=\"" + absolute_without_slash + "\">AP8=</file>"), std::string::npos);

    XML_Writer missing(images({"far.png"}), errors);
    missing.build();
    EXPECT_EQ(errors.str(), "Could not open related file far.png.");
    EXPECT_NE(missing.xml().find("\n    <image_files>\n    </image_files>"), std::string::npos);
}

TEST_F(ImagePathFiles, StopsTheBuildForAWrongPathKind) {
    XML_Writer writer(description_of({item_with(ItemType::IMAGE, "i", {{AttributeId::PATH, dict("k")}})}));
    EXPECT_THROW(writer.build(), std::logic_error);
    EXPECT_THROW(writer.xml(), std::logic_error);
}

}  // namespace
}  // namespace edd
