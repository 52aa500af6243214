#include "store/key_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

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

// Against the plainest index there is, over so many keys that the table grows often.
TEST_F(KeyIndexTest, ManyKeysAreKeptApart) {
    KeyIndex index;
    std::map<std::string, std::vector<xml::Node>> expected;
    const std::vector<xml::Node> nodes{node("a"), node("b"), node("c"), node("d")};
    std::mt19937 random(20);
    for (int step = 0; step < 20'000; ++step) {
        const std::string key = joinedKey({"order", std::to_string(random() % 3000)});
        std::vector<xml::Node>& chain = expected[key];
        const xml::Node node = nodes[random() % nodes.size()];
        const auto found = std::find(chain.begin(), chain.end(), node);
        if (found == chain.end()) {
            chain.push_back(node);
            index.add(key, node);
        } else {
            chain.erase(found);
            index.remove(key, node);
        }
    }
    for (const auto& [key, chain] : expected) {
        EXPECT_EQ(index.all(key), chain) << key;
        EXPECT_EQ(index.first(key), chain.empty() ? xml::Node() : chain.front()) << key;
    }
}

TEST_F(KeyIndexTest, AnEmptyIndexHasNothing) {
    KeyIndex index;
    EXPECT_FALSE(index.first(""));
    EXPECT_TRUE(index.all("").empty());
    index.remove("", node("a"));
    index.add("", node("a"));
    EXPECT_EQ(index.first(""), node("a"));
}

TEST_F(KeyIndexTest, RoomForNoElementsIsRoomForMore) {
    KeyIndex index;
    index.reserve(0);
    EXPECT_FALSE(index.first("1"));
    index.add("1", node("a"));
    index.add("2", node("b"));
    EXPECT_EQ(index.first("1"), node("a"));
    EXPECT_EQ(index.first("2"), node("b"));
    EXPECT_FALSE(index.first("3"));
}

}  // namespace
}  // namespace tandril::store
