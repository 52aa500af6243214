// Characters in UTF-8 and UTF-16, and bytes that are none.
#include "platform/unicode.h"

#include <gtest/gtest.h>

namespace tandril::platform {
namespace {

using namespace std::string_literals;

constexpr ByteOrder byteOrders[] = {ByteOrder::LittleEndian, ByteOrder::BigEndian};

TEST(UnicodeTest, IllFormedUtf8IsNoCharacter) {
    for (const char* bytes :
         {"\x80", "\xC0\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80", "\xF0\x80\x80\x80",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xE2\x82"}) {
        EXPECT_EQ(decodeUtf8(bytes).length, 0U) << bytes;
        EXPECT_FALSE(isUtf8(bytes)) << bytes;
        EXPECT_FALSE(isUtf8("a"s + bytes)) << bytes;
        EXPECT_TRUE(utf16FromUtf8(bytes, ByteOrder::LittleEndian).starts_with("\xFD\xFF")) << bytes;
    }
    EXPECT_EQ(decodeUtf8("").length, 0U);
}

TEST(UnicodeTest, ATextIsCutBehindAWholeCharacter) {
    constexpr std::string_view text = "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x94\xA7z";
    constexpr std::size_t expected[] = {0, 1, 1, 3, 3, 3, 6, 6, 6, 6, 10, 11, 11};
    for (std::size_t most = 0; most < std::size(expected); ++most) {
        EXPECT_EQ(wholeCharacters(text, most), expected[most]) << most;
    }
    EXPECT_EQ(wholeCharacters("\x80\x80\x80\x80\x80\x80\x80", 6), 2U);
}

TEST(UnicodeTest, TheFirstAndLastCharactersOfEveryLengthGoToUtf16AndBack) {
    for (const char* text :
         {"", "a", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
          "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(isUtf8(text)) << text;
        for (const ByteOrder order : byteOrders) {
            const DecodedText back = utf8FromUtf16(utf16FromUtf8(text, order), order);
            EXPECT_TRUE(back.complete) << text;
            EXPECT_EQ(back.text, text);
        }
    }
}

TEST(UnicodeTest, CharactersBeyondTheFirstPlaneAreTwoUnits) {
    EXPECT_EQ(utf16FromUtf8("\xF0\x9F\x94\xA7", ByteOrder::LittleEndian), "\x3D\xD8\x27\xDD");
    EXPECT_EQ(utf16FromUtf8("\xF0\x9F\x94\xA7", ByteOrder::BigEndian), "\xD8\x3D\xDD\x27");
}

TEST(UnicodeTest, IllFormedUtf16EndsTheText) {
    const std::string cases[] = {
        "\0a\0"s,                // half a unit
        "\0a\xD8\x00"s,          // a first half of a pair at the end
        "\0a\xD8\x00\0b"s,       // and before something else
        "\0a\xDC\x00\0b"s,       // a second half alone
        "\0a\xD8\x00\xD8\x00"s,  // two first halves
    };
    for (const std::string& bytes : cases) {
        const DecodedText decoded = utf8FromUtf16(bytes, ByteOrder::BigEndian);
        EXPECT_FALSE(decoded.complete);
        EXPECT_EQ(decoded.text, "a");
    }
}

}  // namespace
}  // namespace tandril::platform
