#include "xml/node.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tandril::xml {
namespace {

Document parsed(std::string_view text) {
    auto document = Document::parse(text);
    if (!document) {
        throw std::invalid_argument(std::string(text));
    }
    return std::move(*document);
}

template <class Nodes>
std::vector<std::string> names(const Nodes& list) {
    std::vector<std::string> found;
    for (const Node node : list) {
        found.emplace_back(node.name());
    }
    return found;
}

TEST(Node, ListsElementsOnly) {
    const Document document = parsed("<a>x<b/><!-- c --><d/><?e f?><![CDATA[g]]><h/>y</a>");
    EXPECT_EQ(names(elements(document.root())), (std::vector<std::string>{"b", "d", "h"}));
    EXPECT_STREQ(elementAt(document.root(), 1).name(), "d");
    EXPECT_FALSE(elementAt(document.root(), 3));
    EXPECT_FALSE(elementAt(Node(), 0));
    EXPECT_TRUE(hasElements(document.root()));
    EXPECT_FALSE(hasElements(child(document.root(), "b")));
}

TEST(Node, FindsTheFirstElementInDocumentOrder) {
    const Document document = parsed("<a><b><c n='1'/></b><c n='2'/></a>");
    EXPECT_EQ(attribute(firstElement(document.root(), "c"), "n"), "1");
    EXPECT_EQ(firstElement(document.root(), "a"), document.root());
    EXPECT_FALSE(firstElement(document.root(), "d"));
    EXPECT_FALSE(firstElement(Node(), "a"));
    EXPECT_FALSE(firstElement(Node(), "a:a"));
    EXPECT_EQ(attribute(child(document.root(), "c"), "n"), "2");
}

TEST(Node, FindsTheElementsInThoseOfAName) {
    for (const std::string name : {"b", "b-b"}) {
        const std::string tag = "<" + name + ">";
        const std::string end = "</" + name + ">";
        const Document document = parsed(tag + "<c/>x<d><e/>" + tag + "<f><g/></f>" + end + "</d>" +
                                         tag + "<h/>" + end + "<!--i-->" + end);
        EXPECT_EQ(names(elementsIn(document.root(), name)),
                  (std::vector<std::string>{"c", "d", "f", name, "h"}));
        EXPECT_EQ(names(elementsIn(child(document.root(), "d"), name)),
                  (std::vector<std::string>{"f"}));
        EXPECT_TRUE(elementsIn(document.root(), "z").empty());
        EXPECT_TRUE(elementsIn(Node(), name).empty());
    }
}

// Names may be any text that a page hands over.
TEST(Node, FindsElementsByNamesThatMeanSomethingInAQuery) {
    const Document document =
        parsed("<a><n:b><é/><text/><div/><b-1/></n:b><b/><c d='1'/><or9/></a>");
    for (const char* const name : {"a", "b", "c", "n:b", "é", "text", "div", "b-1", "or9"}) {
        EXPECT_STREQ(firstElement(document.root(), name).name(), name);
    }
    for (const char* const name : {"", "*", ".", "..", "n:*", "b[1]", "b|c", "c/@d", "text()",
                                   "node()", "b ", " b", "9", "'"}) {
        EXPECT_FALSE(firstElement(document.root(), name)) << name;
    }
}

TEST(Node, ReadsAttributesInAnyOrder) {
    const Document document = parsed("<a b='1' c='2' d='3'/>");
    AttributeReader attribute(document.root());
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(attribute("b"), "1");
        EXPECT_EQ(attribute("d"), "3");
        EXPECT_EQ(attribute("x"), "");
        EXPECT_EQ(attribute("c"), "2");
    }
    EXPECT_EQ(AttributeReader(Node())("b"), "");
}

TEST(Node, StopsTheWalkAtTheTop) {
    const Document document = parsed("<a><b><c/></b><d/></a>");
    const Node b = child(document.root(), "b");
    const Node c = nextElement(b, b);
    EXPECT_STREQ(c.name(), "c");
    EXPECT_FALSE(nextElement(c, b));
    EXPECT_STREQ(nextElement(c, document.root()).name(), "d");
}

TEST(Node, JoinsAllTextBelow) {
    const Document document = parsed("<a>1<b>2<c/></b><!-- x --><![CDATA[<3>]]>4</a>");
    EXPECT_EQ(text(document.root()), "12<3>4");
    EXPECT_EQ(text(Node()), "");
}

TEST(Node, SetsATextOnlyWhenItDiffers) {
    const Document document = parsed("<a><b>1<c>2</c></b></a>");
    const Node b = child(document.root(), "b");
    EXPECT_FALSE(setText(b, "12"));
    EXPECT_EQ(toText(document.root()), "<a><b>1<c>2</c></b></a>");
    EXPECT_TRUE(setText(b, "x & y"));
    EXPECT_EQ(toText(document.root()), "<a><b>x &amp; y</b></a>");
    EXPECT_TRUE(setText(b, ""));
    EXPECT_EQ(toText(document.root()), "<a><b/></a>");
}

TEST(Node, WritesAnElementWhoseTextWasTakenAwayAsAnEmptyOne) {
    const Document document = parsed("<a><b/><c>x</c><d>x<e/></d></a>");
    for (const Node element : elements(document.root())) {
        setText(element, "y");
        EXPECT_EQ(text(element), "y");
        setText(element, "");
        EXPECT_EQ(text(element), "");
    }
    EXPECT_EQ(toText(document.root()), "<a><b/><c/><d/></a>");
}

TEST(Node, KeepsTheOrderOfTextsAndElements) {
    const std::string mixed = "<a>1<b>2</b>3<!--4-->5<c/>6</a>";
    const Document document = parsed(mixed);
    EXPECT_EQ(toText(document.root()), mixed);
    EXPECT_EQ(text(document.root()), "12356");
    const Document copy = parsed("<x/>");
    appendCopy(copy.root(), document.root());
    EXPECT_EQ(toText(copy.root()), "<x>" + mixed + "</x>");
}

TEST(Node, ReadsAMissingAttributeAsEmpty) {
    const Document document = parsed("<a b=''/>");
    EXPECT_EQ(attribute(document.root(), "c"), "");
    EXPECT_EQ(attribute(Node(), "c"), "");
}

TEST(Node, SetsAnAttributeOnlyWhenItDiffers) {
    const Document document = parsed("<a b='1'/>");
    EXPECT_FALSE(setAttribute(document.root(), "b", "1"));
    EXPECT_TRUE(setAttribute(document.root(), "b", "2"));
    EXPECT_TRUE(setAttribute(document.root(), "c", ""));
    EXPECT_FALSE(setAttribute(document.root(), "c", ""));
    EXPECT_EQ(toText(document.root()), "<a b=\"2\" c=\"\"/>");
}

TEST(Node, AppendsDeepCopiesOfAnotherDocument) {
    const Document to = parsed("<a/>");
    {
        const Document from = parsed("<b c='d'><e>f</e><![CDATA[g]]></b>");
        appendCopy(to.root(), from.root());
    }
    EXPECT_EQ(toText(to.root()), "<a><b c=\"d\"><e>f</e><![CDATA[g]]></b></a>");
}

}  // namespace
}  // namespace tandril::xml
