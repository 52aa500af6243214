// The readers of texts: what they take and refuse, and that what they read is what they write.
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <climits>
#include <memory>

#include "platform/fault.h"
#include "platform/home/reg_text.h"
#include "store/sections.h"
#include "target.h"
#include "xml/document.h"
#include "xml/node.h"

namespace tandril::fuzz {
namespace {

using platform::RegText;

// Another parser's word on whether the text is well-formed. Nothing is known when that parser stops
// for reasons of its own, and of texts that begin a document type, which are refused here.
enum class Verdict { WellFormed, Malformed, Unknown };

Verdict otherVerdict(std::string_view text) {
    const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxtPtr)> parser(xmlNewParserCtxt(),
                                                                            xmlFreeParserCtxt);
    const std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> document(
        xmlCtxtReadMemory(parser.get(), text.data(), static_cast<int>(text.size()), nullptr,
                          "UTF-8",
                          XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET |
                              XML_PARSE_HUGE | XML_PARSE_IGNORE_ENC),
        xmlFreeDoc);
    if (text.find("<!DOCTYPE") != text.npos) return Verdict::Unknown;
    // That parser stops there as if it were the end.
    if (text.find('\0') != text.npos) return Verdict::Malformed;
    return parser->wellFormed != 0 ? Verdict::WellFormed : Verdict::Malformed;
}

void compareWithOtherParser(std::string_view input) {
    const bool isTaken = xml::Document::parse(input).has_value();
    const Verdict verdict = otherVerdict(input);
    require(!isTaken || verdict != Verdict::Malformed, "another parser refuses it, too");
    require(isTaken || verdict != Verdict::WellFormed, "another parser takes it, too");
}

void readAndWrite(std::string_view input) {
    if (const auto parsed = xml::Document::parse(input)) {
        const std::string text = parsed->text();
        const auto again = xml::Document::parse(text);
        require(again && again->text() == text, "a text that is read is written as it was");
    }
    if (const auto decoded = xml::Document::decode(std::string(input))) {
        const std::string bytes = decoded->bytes();
        const auto again = xml::Document::decode(bytes);
        require(again && again->bytes() == bytes, "bytes that are read are written as they were");
        require(again->text() == decoded->text(), "they are the same document");
    }
}

// Looking at parts first, in either order, makes no difference.
void readInParts(std::string_view input) {
    const auto whole = xml::Document::decode(std::string(input));
    const auto divided = xml::Document::decode(std::string(input), store::sectionNames);
    require(whole.has_value() == divided.has_value(), "both are read or neither");
    if (!whole) return;
    const auto textOf = [](const xml::Document& document, std::string_view name) {
        return xml::toText(xml::firstElement(document.treeWith(name), name));
    };
    for (const char* const name : {"ccsocservcactv", "ccsocservcordr", "record"}) {
        require(textOf(*divided, name) == textOf(*whole, name), "a part is the same");
    }
    require(divided->bytes() == whole->bytes(), "the parts make up the whole");
}

void runXml(std::string_view input) {
    compareWithOtherParser(input);
    readAndWrite(input);
    readInParts(input);
}

void setAndReadBack(RegText registry, const std::string& value) {
    const std::string key = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Vorn\\Vorn Tandril";
    registry.addKey(key);
    registry.setText(key, "Error", value);
    registry.setNumber(key, "OrderId", UINT_MAX);
    const RegText again(registry.bytes());
    require(again.read(key, "Error") == value, "a text is read as it was set");
    require(again.read(key, "OrderId") == "4294967295", "a number is read as it was set");
}

void runRegistry(std::string_view input) {
    try {
        const RegText registry(input);
        require(registry.bytes() == input, "what is not changed keeps its bytes");
        setAndReadBack(registry, "a \"text\" \\ of\tOrder \xC3\xBC");
    } catch (const Fault&) {
        // It is malformed, and says so.
    }
}

}  // namespace

std::vector<Target> textTargets() {
    return {{"well-formed", runXml}, {"registry.reg", runRegistry}};
}

}  // namespace tandril::fuzz
