#include "xml/document.h"

#include <gtest/gtest.h>

#include <new>

#include "platform/unicode.h"
#include "support/memory_files.h"
#include "xml/node.h"

namespace tandril::xml {
namespace {

std::string reparsed(std::string_view text) {
    const auto document = Document::parse(text);
    return document ? document->text() : "(not well-formed)";
}

TEST(Document, DropsBlankTextBetweenElementsOnly) {
    EXPECT_EQ(reparsed("<a>\n <b> </b>\n <c>\t<d/></c> x <e/>\n</a>"),
              "<a><b> </b><c><d/></c> x <e/></a>");
}

TEST(Document, DropsBlankTextBesideCommentsToo) {
    EXPECT_EQ(reparsed("<a> <!-- c --> <b> <!-- d --> </b> <![CDATA[ ]]> </a>"),
              "<a><!-- c --><b> <!-- d --> </b><![CDATA[ ]]></a>");
}

TEST(Document, DropsBlankTextBesideCommentsBetweenElements) {
    EXPECT_EQ(reparsed("<a> <!-- c --> <b> <?d?> <e> </e> </b> <!-- f --> <g/> </a>"),
              "<a><!-- c --><b><?d?><e> </e></b><!-- f --><g/></a>");
    EXPECT_EQ(reparsed("<a> <b/> <!-- c --> <d> <e/> <![CDATA[f]]> </d> </a>"),
              "<a><b/><!-- c --><d><e/><![CDATA[f]]></d></a>");
}

TEST(Document, BlankTextIsBlankHoweverItIsWritten) {
    EXPECT_EQ(reparsed("<a>&#32;<b>&#9;</b>&#xA; <c/> &#32;x</a>"), "<a><b>\t</b><c/>  x</a>");
}

TEST(Document, KeepsCommentsInstructionsAndSections) {
    const std::string text = "<!--a--><?b c?><d><!--e--><?f?><![CDATA[<g>]]></d><!--h-->";
    EXPECT_EQ(reparsed(text), text);
}

TEST(Document, WritesWhatAParserWouldChangeAsReferences) {
    EXPECT_EQ(reparsed("<a b='&#9;&#10;&#13;&quot;&lt;&amp;'>&#13;&lt;&amp;&gt;\"'</a>"),
              "<a b=\"&#9;&#10;&#13;&quot;&lt;&amp;\">&#13;&lt;&amp;&gt;\"'</a>");
}

TEST(Document, WritesReferencesWhereverTheyStandInALongText) {
    for (std::size_t before = 0; before < 20; ++before) {
        const std::string plain(before, 'x');
        const std::string text = plain + "&#13;" + plain + "\xC3\xA4&amp;>";
        EXPECT_EQ(reparsed("<a b='" + text + "'>" + text + "</a>"),
                  "<a b=\"" + plain + "&#13;" + plain + "\xC3\xA4&amp;&gt;\">" + plain + "&#13;" +
                      plain + "\xC3\xA4&amp;&gt;</a>");
    }
}

TEST(Document, ReadsLineEndsAndAttributeBlanksAsAParserMust) {
    EXPECT_EQ(reparsed("<a b='1\n2\t3\r\n4'>x\r\ny\rz</a>"), "<a b=\"1 2 3 4\">x\ny\nz</a>");
}

TEST(Document, NamesNoEncodingInItsText) {
    EXPECT_EQ(reparsed("<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?><a/>"),
              "<?xml version=\"1.0\" standalone=\"yes\"?><a/>");
}

TEST(Document, IgnoresAByteOrderMarkBeforeAText) {
    EXPECT_EQ(reparsed("\xEF\xBB\xBF<a/>"), "<a/>");
}

TEST(Document, ACheckedTextNamesItsRoot) {
    EXPECT_EQ(checked("<?xml version='1.0'?><a><b/></a>").value().facts.root, "a");
    EXPECT_EQ(checked("\xEF\xBB\xBF<a/>").value().facts.root, "a");
    EXPECT_FALSE(checked("<a>"));
}

TEST(Document, WhatWasParsedBesideItIsNoPartOfIt) {
    auto document = Document::parse("<!--a--><b><c/></b><!--d-->").value();
    const Node other = document.parseBeside(
        checked("<?xml version='1.0'?> <!--e--> <b> <f> <!--g--> <j/> </f> </b> <?h i?>").value());
    EXPECT_EQ(toText(other), "<b><f><!--g--><j/></f></b>");
    EXPECT_EQ(document.text(), "<!--a--><b><c/></b><!--d-->");
    EXPECT_EQ(document.bytes(), "<!--a--><b><c/></b><!--d-->");
}

TEST(Document, ElementsMoveIntoItFromWhatWasParsedBesideIt) {
    auto document = Document::parse("<a><b/></a>").value();
    const Node other = document.parseBeside(checked("<x><c d='1'>e</c><f/></x>").value());
    const Node again = document.parseBeside(checked("<y><g/></y>").value());
    const Node moved = appendMoved(document.root(), child(other, "c"));
    appendMoved(moved, child(again, "g"));
    EXPECT_EQ(document.text(), "<a><b/><c d=\"1\">e<g/></c></a>");
    EXPECT_EQ(toText(other), "<x><f/></x>");
    EXPECT_EQ(toText(again), "<y/>");
}

// The elements that some documents of these tests are divided into.
constexpr std::string_view dividing[] = {"one", "two"};

Document divided(std::string_view text) {
    return Document::decode(std::string(text), dividing).value();
}

TEST(Document, WhatItIsDividedIntoIsParsedWhenItIsAskedFor) {
    const std::string text = "<a b=\"c\"><one>1</one><x/><two><y/></two></a>";
    const Document document = divided(text);
    EXPECT_EQ(document.name(), "a");
    const Node one = document.treeWith("one").first_child();
    EXPECT_EQ(toText(one), "<one>1</one>");
    EXPECT_FALSE(one.next_sibling());
    EXPECT_EQ(document.treeWith("one").first_child(), one);
    EXPECT_EQ(toText(firstElement(document.treeWith("two"), "two")), "<two><y/></two>");
    EXPECT_FALSE(document.isWhole());
    EXPECT_EQ(toText(document.root()), text);
    EXPECT_TRUE(document.isWhole());
    EXPECT_EQ(toText(document.treeWith("one")), text);
    EXPECT_EQ(toText(one), "<one>1</one>");
}

TEST(Document, AnElementThatIsMissingIsLookedForInWhatIsThere) {
    const Document document = divided("<a b='c'><one>1</one><x/></a>");
    EXPECT_FALSE(firstElement(document.treeWith("two"), "two"));
    EXPECT_FALSE(document.isWhole());
}

TEST(Document, ElementsOfTheSameNameStandTogether) {
    const std::string text = "<a><one>1</one><two/><one>2</one></a>";
    const Document document = divided(text);
    EXPECT_EQ(toText(document.treeWith("one")), text);
    EXPECT_TRUE(document.isWhole());
}

TEST(Document, WhoAsksForOtherElementsSeesAllOfIt) {
    const Document document = divided("<a><one>1</one><x><z>2</z></x></a>");
    EXPECT_EQ(toText(document.treeWith("z")), "<a><one>1</one><x><z>2</z></x></a>");
    EXPECT_TRUE(document.isWhole());
}

TEST(Document, IsDividedOnlyWhereThePartsCanBeToldApart) {
    for (const std::string_view text :
         {"<a><one><x><two/></x></one></a>", "<a><!--b--><one/></a>", "<a><one/><?b?></a>",
          "<a>b<one/></a>", "<a><one/>&#32;</a>", "<a><![CDATA[]]><one/></a>", "<a/>", "<a>  </a>",
          "<one><two/></one>"}) {
        EXPECT_TRUE(divided(text).isWhole()) << text;
    }
    EXPECT_FALSE(divided("<a><x><!--b--></x></a>").isWhole());
    EXPECT_FALSE(divided("<a><one><onw/></one></a>").isWhole());
    EXPECT_TRUE(Document::decode("<a><one/></a>").value().isWhole());
}

TEST(Document, DividedOrNotIsTheSameDocument) {
    for (const std::string text :
         {"\xEF\xBB\xBF<?xml version=\"1.0\"?><!--b--> <a>\n<one>\n<c/> d <e> </e></one>\n</a> <?f "
          "g?>",
          "<a ><x/><one> <!-- b --> </one><y>\r\n</y ></a >", "<a><one>&#10;<b/></one></a>",
          "<a b='&lt;'><two c='&#9;'/><one/><two>&amp;</two></a>", "<two><one/></two>"}) {
        const std::string bytes = Document::decode(text).value().bytes();
        EXPECT_EQ(divided(text).bytes(), bytes) << text;
        const Document document = divided(text);
        document.treeWith("two");
        document.treeWith("one");
        EXPECT_EQ(document.text(), Document::decode(text).value().text()) << text;
        EXPECT_EQ(document.bytes(), bytes) << text;
    }
}

TEST(Document, WhatIsParsedBesideADividedOneIsNoPartOfIt) {
    Document document = divided("<a><one>1</one><two/></a><!--b-->");
    const Node other = document.parseBeside(checked("<x><c/></x>").value());
    appendMoved(document.root().last_child(), child(other, "c"));
    EXPECT_EQ(document.bytes(), "<a><one>1</one><two><c/></two></a><!--b-->");
}

// The parser's memory comes to an end after some allocations while this lives.
class ScarceMemory {
  public:
    explicit ScarceMemory(int allocations) {
        left() = allocations;
        pugi::set_memory_management_functions(
            [](std::size_t size) { return left()-- > 0 ? usual(size) : nullptr; },
            pugi::get_memory_deallocation_function());
    }
    ~ScarceMemory() {
        pugi::set_memory_management_functions(usual, pugi::get_memory_deallocation_function());
    }
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

  private:
    static int& left() {
        static int allocations = 0;
        return allocations;
    }
    static inline const pugi::allocation_function usual = pugi::get_memory_allocation_function();
};

// An element with more children than the parser has memory for at a time.
std::string manyElements() {
    std::string text = "<one>";
    for (int i = 0; i < 2000; ++i) {
        text += "<e/>";
    }
    return text + "</one>";
}

TEST(Document, WhatThereWasNoMemoryForIsPutInItsPlaceWhenThereIs) {
    const std::string text = "<a><two>x</two>" + manyElements() + "</a>";
    int failures = 0;
    for (bool isDone = false; !isDone; ++failures) {
        const Document document = divided(text);
        document.treeWith("two");
        try {
            const ScarceMemory memory(failures);
            document.root();
            isDone = true;
        } catch (const std::bad_alloc&) {
            EXPECT_FALSE(document.isWhole());
        }
        EXPECT_EQ(document.text(), text);
    }
    EXPECT_GT(failures, 3);
}

TEST(Document, ATreeThatThereWasNoMemoryForNeverLooksComplete) {
    const std::string text = "<a><two>x</two>" + manyElements() + "</a>";
    int failures = 0;
    for (bool isDone = false; !isDone; ++failures) {
        const Document document = divided(text);
        try {
            const ScarceMemory memory(failures);
            EXPECT_EQ(toText(document.treeWith("one").first_child()), manyElements());
            isDone = true;
        } catch (const std::bad_alloc&) {
            EXPECT_THROW(document.treeWith("one"), std::bad_alloc);
            EXPECT_THROW(document.root(), std::bad_alloc);
            EXPECT_EQ(toText(document.treeWith("two").first_child()), "<two>x</two>");
        }
    }
    EXPECT_GT(failures, 3);
}

TEST(Document, WithoutMemoryThereIsNoPartOfATree) {
    const std::string text = manyElements();
    int failures = 0;
    for (bool isDone = false; !isDone; ++failures) {
        Document document = Document::parse("<a/>").value();
        try {
            const ScarceMemory memory(failures);
            EXPECT_EQ(toText(document.parseBeside(checked(text).value())), text);
            EXPECT_EQ(Document::parse(text).value().text(), text);
            isDone = true;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(document.text(), "<a/>");
        }
    }
    EXPECT_GT(failures, 3);
}

TEST(Document, RefusesMalformedText) {
    EXPECT_FALSE(Document::parse("<a>"));
    EXPECT_FALSE(Document::parse(""));
    EXPECT_FALSE(Document::decode("<a>\xC3</a>"));
}

TEST(Document, WritesBytesInTheEncodingThatItCameIn) {
    const std::string bytes = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xE4</a>";
    const auto document = Document::decode(bytes);
    ASSERT_TRUE(document);
    EXPECT_EQ(text(document->root()), "\xC3\xA4");
    EXPECT_EQ(document->bytes(), bytes);
}

TEST(Document, WritesCharactersThatItsEncodingLacksAsReferences) {
    auto document = Document::decode("<?xml version=\"1.0\" encoding=\"us-ascii\"?><a/>");
    ASSERT_TRUE(document);
    setText(document->root(), "\xE2\x82\xAC");
    EXPECT_EQ(document->bytes(), "<?xml version=\"1.0\" encoding=\"us-ascii\"?><a>&#8364;</a>");
}

TEST(Document, WritesATextInItsDeclaredEncoding) {
    const auto document =
        Document::parse("<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\xE2\x82\xAC</a>");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->bytes(), "<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\x80</a>");
}

TEST(Document, CorrectsAnUnknownEncodingOfAText) {
    const auto document = Document::parse("<?xml version=\"1.0\" encoding=\"x-klingon\"?><a/>");
    ASSERT_TRUE(document);
    EXPECT_EQ(document->bytes(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>");
}

TEST(Document, KeepsAByteOrderMark) {
    const std::string bytes = "\xEF\xBB\xBF<a>\xC3\xA4</a>";
    const auto document = Document::decode(bytes);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->bytes(), bytes);
}

TEST(Document, IsWrittenAsItsDeclarationSaysWhateverItsMarkSaid) {
    const auto latin = Document::decode(
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xC3\xA4</a>");
    ASSERT_TRUE(latin);
    EXPECT_EQ(text(latin->root()), "\xC3\xA4");
    EXPECT_EQ(latin->bytes(), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xE4</a>");
    EXPECT_TRUE(Document::decode(latin->bytes()));

    const auto wide = Document::decode(platform::utf16FromUtf8(
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\xC3\xA4</a>",
        platform::ByteOrder::BigEndian));
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->bytes(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\xC3\xA4</a>");

    const auto unknown =
        Document::decode("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"x-klingon\"?><a/>");
    ASSERT_TRUE(unknown);
    EXPECT_EQ(unknown->bytes(), "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?><a/>");
}

TEST(Document, KeepsTheByteOrderOfUtf16) {
    const std::string bytes = platform::utf16FromUtf8(
        "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\xC3\xA4</a>",
        platform::ByteOrder::BigEndian);
    const auto document = Document::decode(bytes);
    ASSERT_TRUE(document);
    EXPECT_EQ(document->bytes(), bytes);
}

TEST(Document, GivesALargeDocumentInPieces) {
    std::string text = "\xEF\xBB\xBF<?xml version=\"1.0\"?><!-- large --><a>";
    for (int i = 0; i < 100'000; ++i) {
        text += "<b n=\"" + std::to_string(i) + "\">&amp;</b><c/>";
    }
    text += "</a>";
    const auto document = Document::decode(text);
    ASSERT_TRUE(document);
    const platform::Content content = document->content();
    for (int time = 0; time < 2; ++time) {
        std::string whole;
        int pieces = 0;
        content.writeTo([&](std::string_view piece) {
            whole += piece;
            ++pieces;
        });
        EXPECT_EQ(whole, text);
        EXPECT_GE(pieces, 5);
        EXPECT_LE(pieces, 20);
    }
}

TEST(Document, SavesAndLoads) {
    test::MemoryFiles files;
    files.createFolder("C:\\x");
    const auto document = Document::parse("<a><b>1</b></a>");
    ASSERT_TRUE(document);
    files.replace("C:\\x\\d.xml", document->content(), platform::Durability::Durable);
    EXPECT_EQ(files.read("C:\\x\\d.xml"), "<a><b>1</b></a>");
    const auto loaded = load(files, "C:\\x\\d.xml");
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->text(), "<a><b>1</b></a>");
}

TEST(Document, LoadsNothingFromAMissingOrMalformedFile) {
    test::MemoryFiles files;
    files.createFolder("C:\\x");
    EXPECT_FALSE(load(files, "C:\\x\\d.xml"));
    files.replace("C:\\x\\d.xml", "<a>", platform::Durability::Relaxed);
    EXPECT_FALSE(load(files, "C:\\x\\d.xml"));
}

TEST(Document, HoldsDeepDocumentsWithoutRecursion) {
    std::string text;
    for (int i = 0; i < 2000; ++i) {
        text += "<a>";
    }
    std::string closing;
    for (int i = 0; i < 2000; ++i) {
        closing += "</a>";
    }
    text += "x" + closing;
    EXPECT_EQ(reparsed(text), text);
}

}  // namespace
}  // namespace tandril::xml
