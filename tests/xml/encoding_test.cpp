#include "xml/encoding.h"

#include <gtest/gtest.h>

namespace tandril::xml {
namespace {

using namespace std::string_literals;

TEST(Encoding, KnowsNamesInAnyCase) {
    EXPECT_EQ(encodingNamed("utf-8"), Encoding::Utf8);
    EXPECT_EQ(encodingNamed("UTF-16"), Encoding::Utf16Le);
    EXPECT_EQ(encodingNamed("Iso-8859-1"), Encoding::Latin1);
    EXPECT_EQ(encodingNamed("WINDOWS-1252"), Encoding::Windows1252);
    EXPECT_EQ(encodingNamed("us-ascii"), Encoding::Ascii);
    EXPECT_EQ(encodingNamed("koi8-r"), std::nullopt);
}

TEST(Encoding, DecodesUtf16ByItsMark) {
    for (const auto& bytes :
         {"\xFF\xFE<\0\xE4\0=\xD8\0\xDE>\0"s, "\xFE\xFF\0<\0\xE4\xD8=\xDE\0\0>"s}) {
        const auto decoded = decodeDocument(bytes);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(decoded->text, "<\xC3\xA4\xF0\x9F\x98\x80>");
        EXPECT_TRUE(decoded->hadMark);
        EXPECT_EQ(encodeDocument(decoded->text, decoded->encoding, true), bytes);
    }
}

TEST(Encoding, DecodesUtf16WithoutMark) {
    const auto decoded = decodeDocument("<\0a\0/\0>\0"s);
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->text, "<a/>");
    EXPECT_EQ(decoded->encoding, Encoding::Utf16Le);
}

TEST(Encoding, RefusesBrokenUtf16) {
    EXPECT_FALSE(decodeDocument("\xFF\xFE<\0a"s));
    EXPECT_FALSE(decodeDocument("\xFF\xFE=\xD8"s));
    EXPECT_FALSE(decodeDocument("\xFF\xFE\0\xDEx\0"s));
}

TEST(Encoding, DecodesWindows1252) {
    const auto decoded =
        decodeDocument("<?xml version='1.0' encoding='windows-1252'?><a>\x80\x9F\xFC</a>");
    ASSERT_TRUE(decoded);
    EXPECT_EQ(decoded->text,
              "<?xml version='1.0' encoding='windows-1252'?><a>\xE2\x82\xAC\xC5\xB8\xC3\xBC</a>");
}

TEST(Encoding, RefusesBytesBeyondAscii) {
    EXPECT_FALSE(decodeDocument("<?xml version='1.0' encoding='us-ascii'?><a>\xFC</a>"));
}

TEST(Encoding, RefusesAnUnknownName) {
    EXPECT_FALSE(decodeDocument("<?xml version='1.0' encoding='x-unknown'?><a/>"));
}

TEST(Encoding, SplitsASectionAroundAReference) {
    EXPECT_EQ(encodeDocument("<a><![CDATA[1\xE2\x82\xAC"
                             "2]]>\xE2\x82\xAC</a>",
                             Encoding::Latin1, false),
              "<a><![CDATA[1]]>&#8364;<![CDATA[2]]>&#8364;</a>");
}

TEST(Encoding, WritesATextAsItsDeclarationSays) {
    EXPECT_EQ(encodedAsDeclared("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xC3\xA4</a>"),
              "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>");
    EXPECT_EQ(encodedAsDeclared("<?xml version='1.0' encoding='nonsense'?><a>\xC3\xA4</a>"),
              "<?xml version='1.0' encoding='UTF-8'?><a>\xC3\xA4</a>");
    EXPECT_EQ(encodedAsDeclared("<?xml version='1.0' encoding='utf-8'?><a>\xC3\xA4</a>"),
              std::nullopt);
    EXPECT_EQ(encodedAsDeclared("<a>\xC3\xA4</a>"), std::nullopt);
    EXPECT_EQ(encodedAsDeclared("not a document"), std::nullopt);
}

}  // namespace
}  // namespace tandril::xml
