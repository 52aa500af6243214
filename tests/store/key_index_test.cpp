#include "store/key_index.h"

#include <gtest/gtest.h>

#include <string>

#include "support/documents.h"
#include "xml/node.h"

namespace tandril::store {
namespace {

class KeyIndexTest : public testing::Test {
  protected:
    KeyIndexTest() {
        for (const xml::Node node : xml::elements(document_.root())) {
            index_.add(xml::attribute(node, "k"), node);
        }
    }
    xml::Node node(const char* name) const { return xml::child(document_.root(), name); }
    std::string names(std::string_view key) const {
        std::string text;
        for (const xml::Node node : index_.all(key)) {
            text += node.name();
        }
        return text;
    }

    xml::Document document_ = test::document("<r><a k='1'/><b k='2'/><c k='1'/><d k='1'/></r>");
    KeyIndex index_;
};

TEST_F(KeyIndexTest, FirstOfAKeyWins) {
    EXPECT_EQ(index_.first("1"), node("a"));
    EXPECT_EQ(index_.first("2"), node("b"));
    EXPECT_FALSE(index_.first("3"));
    EXPECT_EQ(names("1"), "acd");
    EXPECT_EQ(names("3"), "");
}

TEST_F(KeyIndexTest, RemovingMovesTheNextOneUp) {
    index_.remove("1", node("a"));
    EXPECT_EQ(names("1"), "cd");
    index_.remove("1", node("d"));
    EXPECT_EQ(names("1"), "c");
    index_.add("1", node("a"));
    EXPECT_EQ(names("1"), "ca");
    index_.remove("1", node("c"));
    index_.remove("1", node("a"));
    EXPECT_EQ(names("1"), "");
    EXPECT_FALSE(index_.first("1"));
}

TEST_F(KeyIndexTest, RemovingWhatIsNotThereChangesNothing) {
    index_.remove("1", node("b"));
    index_.remove("9", node("a"));
    EXPECT_EQ(names("1"), "acd");
}

}  // namespace
}  // namespace tandril::store
