// The registry editor's text form: what it means, and that its bytes survive.
#include "platform/home/reg_text.h"

#include <gmock/gmock.h>

#include "platform/fault.h"

namespace tandril::platform {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Optional;

constexpr std::string_view keyPath = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Vorn";

// A file with the given lines below its header, all ended by CRLF.
std::string file(std::initializer_list<std::string_view> lines) {
    std::string text = "Windows Registry Editor Version 5.00\r\n";
    for (const std::string_view line : lines) text.append(line).append("\r\n");
    return text;
}

// The same text as the editor exports it: UTF-16LE behind a byte order mark.
std::string exported(std::string_view text) {
    return "\xFF\xFE" + utf16FromUtf8(text, ByteOrder::LittleEndian);
}

std::string withValue(std::string_view line) {
    return file({"", "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vorn]", line, ""});
}

std::string faultOf(const std::string& bytes) {
    try {
        RegText text(bytes);
        return "(none)";
    } catch (const Fault& fault) {
        return fault.what();
    }
}

// Everything that an export of the editor may hold, and what people write into one.
std::string everything() {
    return file({
        "",
        "; made by hand",
        "[HKEY_LOCAL_MACHINE\\SOFTWARE]",
        "",
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vorn]",
        "@=\"default\"",
        "\"Text\"=\"C:\\\\Vorn \\\"Tandril\\\"\"",
        "  \"Spaced\" = \"x\" ; why",
        "\"Lines\"=\"one\r\n[two]\r\n\"",
        "\"Number\"=dword:0000000A",
        "\"Binary\"=hex:01,02,\\",
        "  03,04",
        "\"Expand\"=hex(2):25,00,41,00,25,00,00,00",
        "\"Many\"=hex(7):61,00,00,00,\\",
        "  62,00,00,00,\\",
        "  00,00",
        "\"Quad\"=hex(b):01,00,00,00,00,00,00,00",
        "\"Nothing\"=hex(0):",
        "\"Gone\"=-",
        "\"Odd\"=whatever this is",
        "no value at all",
        "",
        "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Old]",
        "\"Below\"=\"a deleted key\"",
        "",
        "[HKEY_CLASSES_ROOT\\.mdb]",
        "\"a[b]\"=\"Gr\xC3\xB6\xC3\x9F"
        "e \xF0\x9F\x94\xA7\"",
        "",
    });
}

TEST(RegTextTest, BytesSurvive) {
    std::string unix = everything();
    std::erase(unix, '\r');
    const std::string texts[] = {
        everything(),
        exported(everything()),
        "\xEF\xBB\xBF" + everything(),
        unix,
        everything().substr(0, everything().size() - 4),  // no line end at the end
        "Windows Registry Editor Version 5.00",
        "Windows Registry Editor Version 5.00 \t\r\n\r\n\r\n",
    };
    for (const std::string& text : texts) EXPECT_EQ(RegText(text).bytes(), text);
}

TEST(RegTextTest, ReadsEveryType) {
    const RegText text(everything());
    EXPECT_THAT(text.valueNames(keyPath), ElementsAre("Text", "Spaced", "Lines", "Number", "Binary",
                                                      "Expand", "Many", "Quad", "Nothing", "Odd"));
    constexpr struct {
        const char* name;
        const char* data;
    } cases[] = {
        {"", "default"},   {"Text", "C:\\Vorn \"Tandril\""},
        {"Spaced", "x"},   {"Lines", "one\r\n[two]\r\n"},
        {"Number", "10"},  {"Binary", ""},
        {"Expand", "%A%"}, {"Many", ""},
        {"Quad", ""},      {"Nothing", ""},
        {"Odd", ""},
    };
    for (const auto& [name, data] : cases) {
        EXPECT_THAT(text.read(keyPath, name), Optional(std::string(data))) << name;
    }
    EXPECT_EQ(text.read(keyPath, "Gone"), std::nullopt);
}

TEST(RegTextTest, ReadsAnExportOfTheEditor) {
    const RegText text(exported(everything()));
    EXPECT_THAT(text.read("HKEY_CLASSES_ROOT\\.mdb", "a[b]"),
                Optional(std::string("Gr\xC3\xB6\xC3\x9F"
                                     "e \xF0\x9F\x94\xA7")));
}

TEST(RegTextTest, DeletedKeysAreNone) {
    const RegText text(everything());
    EXPECT_FALSE(text.hasKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\Old"));
    EXPECT_FALSE(text.hasKey("-HKEY_LOCAL_MACHINE\\SOFTWARE\\Old"));
    EXPECT_THAT(text.subKeys("HKEY_LOCAL_MACHINE\\SOFTWARE"), ElementsAre("Vorn"));
}

TEST(RegTextTest, AKeyMakesItsParentsExist) {
    const RegText text(file({"[HKEY_LOCAL_MACHINE\\a\\b\\c]", "[hkey_local_machine\\A\\D]"}));
    EXPECT_TRUE(text.hasKey("HKEY_LOCAL_MACHINE\\a"));
    EXPECT_TRUE(text.hasKey("HKEY_LOCAL_MACHINE\\A\\B"));
    EXPECT_FALSE(text.hasKey("HKEY_LOCAL_MACHINE\\a\\b\\c\\d"));
    EXPECT_FALSE(text.hasKey("HKEY_CURRENT_USER"));
    EXPECT_THAT(text.subKeys("HKEY_LOCAL_MACHINE"), ElementsAre("a"));
    EXPECT_THAT(text.subKeys("HKEY_LOCAL_MACHINE\\a"), ElementsAre("b", "D"));
    EXPECT_THAT(text.subKeys("HKEY_LOCAL_MACHINE\\a\\b\\c"), IsEmpty());
}

TEST(RegTextTest, AKeyThatStandsTwiceIsOneAndTheLastValueCounts) {
    RegText text(file({"[HKEY_LOCAL_MACHINE\\a]", "\"x\"=\"1\"", "\"y\"=\"2\"",
                       "[HKEY_LOCAL_MACHINE\\A]", "\"x\"=\"3\""}));
    EXPECT_THAT(text.valueNames("HKEY_LOCAL_MACHINE\\a"), ElementsAre("x", "y"));
    EXPECT_THAT(text.read("HKEY_LOCAL_MACHINE\\a", "x"), Optional(std::string("3")));
    text.setText("HKEY_LOCAL_MACHINE\\a", "x", "4");
    EXPECT_EQ(text.bytes(), file({"[HKEY_LOCAL_MACHINE\\a]", "\"x\"=\"1\"", "\"y\"=\"2\"",
                                  "[HKEY_LOCAL_MACHINE\\A]", "\"x\"=\"4\""}));
}

TEST(RegTextTest, MalformedFilesAreFaultsWithTheirLine) {
    const struct {
        std::string bytes;
        const char* message;
    } cases[] = {
        {"", "line 1: the file does not begin with \"Windows Registry Editor Version 5.00\""},
        {"REGEDIT4\r\n", "line 1: the file does not begin with"},
        {"Windows Registry Editor Version 5.001\r\n", "line 1: the file does not begin with"},
        {"\r\nWindows Registry Editor Version 5.00\r\n", "line 1: the file does not begin with"},
        {withValue("\"a\"=\"open"), "line 4: the closing quotation mark is missing"},
        {withValue("\"a=1"), "line 4: the closing quotation mark is missing"},
        {withValue("\"a\""), "line 4: \"=\" is missing behind the value's name"},
        {withValue("\"a\"="), "line 4: the value's data is missing"},
        {withValue("\"a\"=dword:"), "line 4: a number has one to eight hexadecimal digits"},
        {withValue("\"a\"=dword:123456789"), "line 4: a number has one to eight"},
        {withValue("\"a\"=dword:12g"), "line 4: unexpected text behind the value's data"},
        {withValue("\"a\"=\"b\"c"), "line 4: unexpected text behind the value's data"},
        {file({"[HKEY_LOCAL_MACHINE\\a]", "\"a\"=hex:01,\\"}), "line 3: the value's data breaks"},
        {file({"", "", "[HKEY_LOCAL_MACHINE\\a"}), "line 4: the key's closing bracket is missing"},
        {withValue("\"Gr\xF6\xDF"
                   "e\"=\"latin\""),
         "line 4: the text is not UTF-8"},
        {exported(withValue("")) + "x", "line 6: the text is not UTF-16"},
        {exported(file({"a"})) + std::string("\x00\xD8\x00\x00", 4),
         "line 3: the text is not UTF-16"},
    };
    for (const auto& [bytes, message] : cases) {
        EXPECT_THAT(faultOf(bytes), HasSubstr(message)) << bytes;
    }
}

TEST(RegTextTest, ChangesTouchTheirValueOnly) {
    std::string expected = everything();
    RegText text(everything());
    const auto replace = [&](std::string_view from, std::string_view to) {
        expected.replace(expected.find(from), from.size(), to);
    };
    EXPECT_TRUE(text.setExisting(keyPath, "Spaced", "\\"));
    replace("\"Spaced\" = \"x\" ; why", "\"Spaced\" = \"\\\\\" ; why");
    EXPECT_TRUE(text.setExisting(keyPath, "Lines", "one"));
    replace("\"one\r\n[two]\r\n\"", "\"one\"");
    EXPECT_TRUE(text.setExisting(keyPath, "Number", "255"));
    replace("dword:0000000A", "dword:000000ff");
    EXPECT_TRUE(text.setExisting(keyPath, "Expand", "%B"));
    replace("hex(2):25,00,41,00,25,00,00,00", "hex(2):25,00,42,00,00,00");
    text.setText(keyPath, "", "d");
    replace("@=\"default\"", "@=\"d\"");
    EXPECT_EQ(text.bytes(), expected);
    EXPECT_EQ(RegText(expected).bytes(), expected);
}

TEST(RegTextTest, SettingTheSameDataKeepsTheBytes) {
    RegText text(everything());
    text.setExisting(keyPath, "Number", "10");
    text.setNumber(keyPath, "Number", 10);
    text.setText(keyPath, "Spaced", "x");
    text.setExisting(keyPath, "Expand", "%A%");
    text.addKey("hkey_local_machine\\software\\vorn");
    EXPECT_EQ(text.bytes(), everything());
}

TEST(RegTextTest, ChangesKeepTheEncoding) {
    RegText text(exported(withValue("\"a\"=\"1\"")));
    text.setText(keyPath, "a", "\xE2\x82\xAC");
    EXPECT_EQ(text.bytes(), exported(withValue("\"a\"=\"\xE2\x82\xAC\"")));
}

TEST(RegTextTest, ValuesOfOtherTypesCannotTakeText) {
    RegText text(everything());
    EXPECT_THROW(text.setExisting(keyPath, "Binary", "x"), Fault);
    EXPECT_THROW(text.setExisting(keyPath, "Odd", "x"), Fault);
    EXPECT_EQ(text.bytes(), everything());
}

TEST(RegTextTest, TextThatIsNotUtf8IsRefused) {
    RegText text(everything());
    EXPECT_THROW(text.setText(keyPath, "Text", "\xFF"), Fault);
    EXPECT_THROW(text.setText(keyPath, "\xFF", "x"), Fault);
    EXPECT_THROW(text.addKey("HKEY_LOCAL_MACHINE\\\xFF"), Fault);
    EXPECT_THROW(text.setExisting(keyPath, "Text", "\xFF"), Fault);
    EXPECT_EQ(text.bytes(), everything());
}

TEST(RegTextTest, LongExpandableTextBreaksAsTheEditorDoes) {
    RegText text(withValue("\"ImagePath\"=hex(2):00,00"));
    text.setExisting(keyPath, "ImagePath", "system32\\DRIVERS\\acpi.sys");
    EXPECT_EQ(
        text.bytes(),
        withValue(
            "\"ImagePath\"=hex(2):73,00,79,00,73,00,74,00,65,00,6d,00,33,00,32,00,5c,00,44,00,"
            "\\\r\n"
            "  52,00,49,00,56,00,45,00,52,00,53,00,5c,00,61,00,63,00,70,00,69,00,2e,00,73,\\\r\n"
            "  00,79,00,73,00,00,00"));
    EXPECT_THAT(RegText(text.bytes()).read(keyPath, "ImagePath"),
                Optional(std::string("system32\\DRIVERS\\acpi.sys")));
}

TEST(RegTextTest, NewKeysAndValuesAreWrittenAsTheEditorDoes) {
    RegText text;
    text.addKey(keyPath);
    text.setText(keyPath, "Mode", "Online");
    text.setNumber(keyPath, "OrderId", 10);
    text.addKey("HKEY_CURRENT_USER\\Software");
    text.setText("HKEY_CURRENT_USER\\Software", "", "C:\\");
    text.setText(keyPath, "Error", "1");
    EXPECT_EQ(text.bytes(), file({"", "[HKEY_LOCAL_MACHINE\\SOFTWARE]", "",
                                  "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Vorn]", "\"Mode\"=\"Online\"",
                                  "\"OrderId\"=dword:0000000a", "\"Error\"=\"1\"", "",
                                  "[HKEY_CURRENT_USER\\Software]", "@=\"C:\\\\\"", ""}));
}

TEST(RegTextTest, NewLinesFollowTheFilesOwnLineEnd) {
    const std::string before = "Windows Registry Editor Version 5.00\n[HKEY_LOCAL_MACHINE\\a]";
    RegText text(before);
    text.setText("HKEY_LOCAL_MACHINE\\a", "x", "1");
    text.addKey("HKEY_LOCAL_MACHINE\\b");
    EXPECT_EQ(text.bytes(), before + "\n\"x\"=\"1\"\n\n[HKEY_LOCAL_MACHINE\\b]\n\n");
}

TEST(RegTextTest, AValueOfAKeyThatOnlyItsSubKeysNameGetsTheKeyALine) {
    RegText text(file({"", "[HKEY_LOCAL_MACHINE\\a\\b]", ""}));
    text.setText("HKEY_LOCAL_MACHINE\\A", "x", "1");
    EXPECT_EQ(text.bytes(), file({"", "[HKEY_LOCAL_MACHINE\\a\\b]", "", "[HKEY_LOCAL_MACHINE\\a]",
                                  "\"x\"=\"1\"", ""}));
}

TEST(RegTextTest, KeysWithoutANameAreRefused) {
    RegText text;
    EXPECT_THROW(text.addKey("HKEY_LOCAL_MACHINE\\a\\\\b"), Fault);
    EXPECT_THROW(text.addKey("HKEY_LOCAL_MACHINE\\a\\"), Fault);
}

}  // namespace
}  // namespace tandril::platform
