// The document wrapper: declaration and line ends, empty elements and empty texts, text
// conversion, indentation nodes, refused names and saving.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "xml/dom.hpp"
#include "xml_test_helpers.hpp"

namespace edd {
namespace {

using xml_test::declaration;
using xml_test::expect_well_formed;

TEST(DomDocument, HoldsDeclarationAndEndsWithOneLineEnd) {
    DomDocument document;
    EXPECT_EQ(document.xml(), std::string(declaration));
    document.create_root_element("first").append_element("child");
    // A second root replaces the first instead of making the document ill-formed.
    document.create_root_element("EDDL").set_attribute("version", "0.1");
    EXPECT_EQ(document.xml(), std::string(declaration) + "<EDDL version=\"0.1\"/>\n");
}

TEST(DomElement, SerialisesContentExactly) {
    struct Case {
        const char* name;
        void (*fill)(DomElement);
        std::string_view expected;
    };
    const Case cases[] = {
        {"empty element has no blank before the slash", [](DomElement r) { r.append_element("a"); }, "<r><a/></r>"},
        {"empty text keeps both tags", [](DomElement r) { r.append_element("string").append_text(""); },
         "<r><string></string></r>"},
        {"markup is escaped", [](DomElement r) { r.append_text("a<b&c>\"'"); }, "<r>a&lt;b&amp;c&gt;\"'</r>"},
        {"attribute quotes are escaped", [](DomElement r) { r.set_attribute("v", "\"<&"); },
         "<r v=\"&quot;&lt;&amp;\"/>"},
        {"setting an attribute twice keeps one",
         [](DomElement r) {
             r.set_attribute("v", "1");
             r.set_attribute("v", "2");
         },
         "<r v=\"2\"/>"},
        {"latin-1 becomes utf-8 everywhere",
         [](DomElement r) { r.append_element("M\xFC").set_attribute("n", "\xE9"); r.append_text("\xB0"); },
         "<r><M\xC3\xBC n=\"\xC3\xA9\"/>\xC2\xB0</r>"},
        {"controls become U+FFFD", [](DomElement r) { r.set_attribute("v", "\x01"); r.append_text("\x1F" "a\x7F"); },
         "<r v=\"\xEF\xBF\xBD\">\xEF\xBF\xBD" "a\x7F</r>"},
        {"indent up to level five", [](DomElement r) { r.indent(0); r.indent(2); }, "<r>\n\n        </r>"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DomDocument document;
        c.fill(document.create_root_element("r"));
        EXPECT_EQ(document.xml(), std::string(declaration) + std::string(c.expected) + "\n");
        expect_well_formed(document.xml());
    }
}

// The writer's layout: elements on lines of their own by depth, except beside a text.
TEST(DomDocument, IndentedLayoutPutsElementsOnLinesOfTheirOwn) {
    struct Case {
        const char* name;
        void (*fill)(DomElement);
        std::string_view expected;
    };
    const Case cases[] = {
        {"children one level deeper, closing tags in line with opening ones",
         [](DomElement r) {
             r.append_element("a").append_element("b");
             r.append_element("c");
         },
         "<r>\n    <a>\n        <b/>\n    </a>\n    <c/>\n</r>"},
        {"an element with text stays on one line", [](DomElement r) { r.append_element("s").append_text("x"); },
         "<r>\n    <s>x</s>\n</r>"},
        {"inline elements stay on their parent's line",
         [](DomElement r) { r.append_element("k").append_inline_element("d").append_inline_element("s").append_text("t"); },
         "<r>\n    <k><d><s>t</s></d></k>\n</r>"},
        {"indentation text keeps an element without children open",
         [](DomElement r) { r.append_element("e").indent(1); }, "<r>\n    <e>\n    </e>\n</r>"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DomDocument document(DomLayout::indented);
        c.fill(document.create_root_element("r"));
        EXPECT_EQ(document.xml(), std::string(declaration) + std::string(c.expected) + "\n");
        expect_well_formed(document.xml());
    }
}

TEST(DomElement, IndentsDeepLevelsWithOneNodePerLevel) {
    DomDocument document;
    DomElement root = document.create_root_element("r");
    root.indent(7);
    const pugi::xml_node node = root.node();
    EXPECT_EQ(std::distance(node.children().begin(), node.children().end()), 8);
    EXPECT_STREQ(node.first_child().value(), "\n");
    EXPECT_STREQ(node.last_child().value(), "    ");
    EXPECT_EQ(document.xml(), std::string(declaration) + "<r>\n" + std::string(28, ' ') + "</r>\n");
}

TEST(DomElement, RefusesNamesThatAreNotXmlNames) {
    for (const char* name : {"", "1a", "-a", "a b", "a<b", "a\"b"}) {
        SCOPED_TRACE(name);
        DomDocument document;
        DomElement root = document.create_root_element("r");
        EXPECT_THROW(root.append_element(name), std::logic_error);
        EXPECT_THROW(document.create_root_element(name), std::logic_error);
        expect_well_formed(document.xml());
    }
    DomDocument document;
    DomElement root = document.create_root_element("r");
    for (const char* name : {"a-b.c_1", "_x", "ns:x", "\xC3\xA4\xC3\xB6", "\xE4"})
        EXPECT_NO_THROW(root.append_element(name));
}

TEST(DomDocument, SavesTheSerialisedText) {
    const auto file = std::filesystem::temp_directory_path() / "tarnwick_dom_save.xml";
    DomDocument document;
    document.create_root_element("r").append_text("\xFC");
    ASSERT_TRUE(document.save(file.string()));
    std::ifstream in(file, std::ios::binary);
    const std::string saved((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(saved, document.xml());  // no byte-order mark
    std::filesystem::remove(file);
    EXPECT_FALSE(document.save((file / "no" / "such" / "dir.xml").string()));
}

}  // namespace
}  // namespace edd
