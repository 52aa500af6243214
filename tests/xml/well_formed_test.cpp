#include "xml/well_formed.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace tandril::xml {
namespace {

bool isWellFormed(std::string_view text) {
    Facts facts;
    return !checkWellFormed(text, facts);
}

std::string reasonFor(std::string_view text) {
    Facts facts;
    const auto problem = checkWellFormed(text, facts);
    return problem ? problem->reason : "";
}

TEST(WellFormed, AcceptsDocuments) {
    const std::vector<std::string> documents{
        "<a/>",
        "<a></a>",
        "<a >text</a >",
        "<?xml version=\"1.0\"?><a/>",
        "<?xml version='1.0' encoding='UTF-8' standalone='yes' ?>\r\n<a/>",
        "<!-- before --><?pi before?><a/><!-- behind --><?pi?> \n",
        "<a b='1' c=\"2\"/>",
        "<a b=\"'\" c='\"'/>",
        "<a>&amp;&lt;&gt;&quot;&apos;&#65;&#x41;&#x10FFFF;</a>",
        "<a><![CDATA[<b>&nothing;]]]></a>",
        "<a>]] ></a>",
        "<a>&gt;]]</a>",
        "<n:a x:b='1' n:b='2'/>",
        "<_a-b.c1/>",
        "<\xC3\xA4/>",
        "<a>\xF0\x9F\x98\x80</a>",
        "<a><!-- - --></a>",
        "<a><?target data ? > ?></a>",
        "<a b='>'/>",
    };
    for (const std::string& document : documents) {
        EXPECT_TRUE(isWellFormed(document)) << document << ": " << reasonFor(document);
    }
}

TEST(WellFormed, RefusesWhatIsNotADocument) {
    const std::vector<std::string> texts{
        "",
        " ",
        "text",
        "<a>",
        "</a>",
        "<a></b>",
        "<a><b></a></b>",
        "<a/><b/>",
        "<a/>text",
        "text<a/>",
        " <?xml version='1.0'?><a/>",
        "<a><?xml version='1.0'?></a>",
        "<?xml encoding='UTF-8'?><a/>",
        "<?xml version='2.0'?><a/>",
        "<?xml version='1.0' standalone='maybe'?><a/>",
        "<?xml version='1.0' encoding=''?><a/>",
        "<!DOCTYPE a><a/>",
        "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>",
        "<a b='1' b='2'/>",
        "<a b=1/>",
        "<a b/>",
        "<a b='1'c='2'/>",
        "<a b='<'/>",
        "<a b='&'/>",
        "<a>&</a>",
        "<a>&unknown;</a>",
        "<a>&amp</a>",
        "<a>&#0;</a>",
        "<a>&#xD800;</a>",
        "<a>&#x110000;</a>",
        "<a>&#99999999999999999999;</a>",
        "<a>&#;</a>",
        "<a>&#x;</a>",
        "<a>]]></a>",
        "<a>\x01</a>",
        "<a>\xEF\xBF\xBF</a>",
        "<a>\xC3</a>",
        "<a>\xC0\x80</a>",
        "<a>\xED\xA0\x80</a>",
        "<a><!-- -- --></a>",
        "<a><!-- ---></a>",
        "<a><!-- </a>",
        "<a><![CDATA[</a>",
        "<a><?pi</a>",
        "<a><?XML x?></a>",
        "<1/>",
        "<-a/>",
        "< a/>",
        "<a / >",
        std::string("<a>\0</a>", 8),
    };
    for (const std::string& text : texts) {
        EXPECT_NE(reasonFor(text), "") << text;
    }
}

TEST(WellFormed, FindsRepeatedAttributeAmongMany) {
    std::string tag = "<a";
    for (int i = 0; i < 100; ++i) {
        tag += " a" + std::to_string(i) + "=''";
    }
    EXPECT_TRUE(isWellFormed(tag + "/>"));
    EXPECT_EQ(reasonFor(tag + " a7=''/>"), "an attribute occurs twice");
    EXPECT_EQ(reasonFor(tag + " a99=''/>"), "an attribute occurs twice");
}

TEST(WellFormed, RefusesBottomlessNesting) {
    const auto nested = [](std::size_t depth) {
        std::string text;
        for (std::size_t i = 0; i < depth; ++i) {
            text += "<a>";
        }
        for (std::size_t i = 0; i < depth; ++i) {
            text += "</a>";
        }
        return text;
    };
    EXPECT_TRUE(isWellFormed(nested(maximumDepth)));
    EXPECT_EQ(reasonFor(nested(maximumDepth + 1)), "elements are nested too deeply");
}

// Ordinary bytes are passed over many at a time, so every byte has to count in every place.
void expectBytes(std::string_view before, std::string_view behind,
                 const std::function<bool(unsigned char)>& isAllowed) {
    for (std::size_t letters = 0; letters <= 18; ++letters) {
        for (int value = 0; value < 256; ++value) {
            const auto byte = static_cast<unsigned char>(value);
            const std::string text = std::string(before) + "a" + std::string(letters, 'Z') +
                                     static_cast<char>(byte) + "azAZ" + std::string(behind);
            EXPECT_EQ(isWellFormed(text), isAllowed(byte)) << value << " behind " << letters;
        }
    }
}

bool isLegalAscii(unsigned char byte) {
    return byte == '\t' || byte == '\n' || byte == '\r' || (byte >= 0x20 && byte < 0x80);
}

TEST(WellFormed, JudgesEveryByteOfATextInEveryPlace) {
    expectBytes("<r>", "</r>", [](unsigned char byte) {
        return isLegalAscii(byte) && byte != '<' && byte != '&';
    });
}

TEST(WellFormed, JudgesEveryByteOfAValueInEveryPlace) {
    for (const char quote : {'"', '\''}) {
        expectBytes(std::string("<r v=") + quote, std::string(1, quote) + "/>",
                    [quote](unsigned char byte) {
                        return isLegalAscii(byte) && byte != '<' && byte != '&' && byte != quote;
                    });
    }
}

TEST(WellFormed, JudgesEveryByteOfANameInEveryPlace) {
    expectBytes("<", "/>", [](unsigned char byte) {
        return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
               (byte >= '0' && byte <= '9') || byte == '-' || byte == '.' || byte == '_' ||
               byte == ':';
    });
}

TEST(WellFormed, TellsTheDeclaration) {
    const std::string text = "<?xml version=\"1.0\" encoding='ISO-8859-1' standalone='no'?><a/>";
    Facts facts;
    ASSERT_FALSE(checkWellFormed(text, facts));
    EXPECT_TRUE(facts.declaration.present);
    EXPECT_EQ(facts.declaration.version, "1.0");
    EXPECT_EQ(facts.declaration.encoding, "ISO-8859-1");
    EXPECT_EQ(facts.declaration.standalone, "no");
    EXPECT_EQ(text.substr(facts.declaration.end), "<a/>");
}

TEST(WellFormed, TellsTheNameOfTheRoot) {
    Facts facts;
    ASSERT_FALSE(checkWellFormed("<!--x--><ro.ot a='1'><b/></ro.ot>", facts));
    EXPECT_EQ(facts.root, "ro.ot");
    ASSERT_FALSE(checkWellFormed("<empty/>", facts));
    EXPECT_EQ(facts.root, "empty");
}

TEST(WellFormed, TellsWhatStandsInTheRoot) {
    constexpr std::string_view names[] = {"b"};
    const std::string text = "<a>\n<b>1</b ><c d='/>'><e/></c> <b/></a>";
    Facts facts;
    ASSERT_FALSE(checkWellFormed(text, facts, names));
    ASSERT_EQ(facts.parts.size(), 3U);
    EXPECT_EQ(facts.parts[0].name, "b");
    EXPECT_EQ(facts.parts[0].text, "<b>1</b >");
    EXPECT_EQ(facts.parts[1].name, "c");
    EXPECT_EQ(facts.parts[1].text, "<c d='/>'><e/></c>");
    EXPECT_EQ(facts.parts[2].text, "<b/>");
    ASSERT_FALSE(checkWellFormed(text, facts));
    EXPECT_TRUE(facts.parts.empty());
}

TEST(WellFormed, TellsNoPartsWhenAPartsNameStandsElsewhere) {
    constexpr std::string_view names[] = {"b", "cd"};
    Facts facts;
    for (const std::string_view text :
         {"<a><b/><x><b/></x></a>", "<a><b><cd>1</cd></b></a>", "<a><x><y><cd/></y></x><b/></a>",
          "<b><x/></b>", "<cd><b/></cd>"}) {
        ASSERT_FALSE(checkWellFormed(text, facts, names));
        EXPECT_TRUE(facts.parts.empty()) << text;
    }
    ASSERT_FALSE(checkWellFormed("<a><b/><cd><ce b='1'/></cd></a>", facts, names));
    EXPECT_EQ(facts.parts.size(), 2U);
}

// As long as the square of it would take minutes.
TEST(WellFormed, LooksAtManyBlanksBeforeManyReferencesOnce) {
    std::string text = "<a>" + std::string(1'000'000, ' ') + "&lt;";
    for (int i = 0; i < 200'000; ++i) {
        text += "&#32;";
    }
    EXPECT_TRUE(isWellFormed(text + "</a>"));
}

TEST(WellFormed, TellsWhereTheProblemIs) {
    Facts facts;
    const auto problem = checkWellFormed("<a>\n<b></c></a>", facts);
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->position, 9U);
    EXPECT_EQ(problem->reason, "a closing tag does not match");
}

TEST(WellFormed, ReadsTheDeclarationOfAnUnfinishedText) {
    const auto declaration = readDeclaration("<?xml version='1.0' encoding='x-y'?><broken");
    ASSERT_TRUE(declaration);
    EXPECT_EQ(declaration->encoding, "x-y");
    EXPECT_FALSE(readDeclaration("<a/>"));
    EXPECT_FALSE(readDeclaration("<?xml version='1.0'"));
}

}  // namespace
}  // namespace tandril::xml
