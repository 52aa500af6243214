#include "days/comparison.h"

#include <algorithm>
#include <optional>
#include <regex>
#include <vector>

#include "xml/document.h"
#include "xml/node.h"

namespace tandril::test {
namespace {

using nlohmann::json;

constexpr std::string_view databaseFault = "Error =   <DBFAULT>";

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return text;
}

std::string canonicalTag(xml::Node element) {
    std::vector<std::string> attributes;
    for (const pugi::xml_attribute attribute : element.attributes()) {
        attributes.push_back(std::string(" ") + attribute.name() + "=\"" + attribute.value() +
                             "\"");
    }
    std::sort(attributes.begin(), attributes.end());
    std::string text = "<" + std::string(element.name());
    for (const std::string& attribute : attributes) {
        text += attribute;
    }
    return text + ">";
}

void appendCanonical(std::string& out, xml::Node node) {
    switch (node.type()) {
        case pugi::node_element:
            out += canonicalTag(node);
            for (const xml::Node child : node.children()) {
                appendCanonical(out, child);
            }
            out += "</" + std::string(node.name()) + ">";
            break;
        case pugi::node_comment:
            out += "<!--" + std::string(node.value()) + "-->";
            break;
        case pugi::node_pi:
            out += "<?" + std::string(node.name()) + " " + node.value() + "?>";
            break;
        default:
            out += node.value();
    }
}

std::string canonical(std::string_view bytes) {
    const auto document = xml::Document::decode(std::string(bytes));
    if (!document) {
        return "(not well-formed) " + std::string(bytes);
    }
    std::string out;
    for (const xml::Node node : document->root().parent().children()) {
        appendCanonical(out, node);
    }
    return out;
}

// An XML text without what a parser would write another way.
std::string plain(std::string text) {
    text = std::regex_replace(text, std::regex("^(\xEF\xBB\xBF)?<\\?xml[^>]*\\?>\\s*"), "");
    for (const auto& [reference, character] :
         {std::pair("&gt;", ">"), std::pair("&quot;", "\""), std::pair("&apos;", "'")}) {
        text = std::regex_replace(text, std::regex(reference), character);
    }
    text.erase(text.find_last_not_of("\r\n") + 1);
    return text;
}

std::vector<std::string> linesOf(std::string_view text) {
    static const std::regex time("(\\|--------- Logged On:  ).*?(  For User Action: )");
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find("\r\n"), text.size());
        lines.push_back(std::regex_replace(std::string(text.substr(0, end)), time, "$1<TIME>$2"));
        text.remove_prefix(std::min(end + 2, text.size()));
    }
    return lines;
}

bool isErrorLine(const std::string& line) {
    return line.starts_with("Error =   ");
}

bool isMail(const json& step, std::string_view what) {
    return lower(step["method"]) == "getmailcontent" && step["args"][0] == what;
}

std::string compareResult(const json& step, const std::string& expected, const std::string& actual,
                          bool isAfterFault) {
    if (isMail(step, "Log")) {
        return compareLog(expected, actual);
    }
    const std::string method = lower(step["method"]);
    if (method == "createxmlstringforupdate" || method == "getmailcontent") {
        return compareText(plain(expected), plain(actual));
    }
    const auto meansNoError = [](const std::string& text) { return text.empty() || text == "1"; };
    if (isAfterFault && meansNoError(expected) && meansNoError(actual)) {
        return {};
    }
    return compareText(expected, actual);
}

// The two methods that take a name by reference hand back what they got; a recorded call may leave
// that out.
std::string compareOut(const json& step, const json& expected, const json& actual) {
    const std::string method = lower(step["method"]);
    const json wanted = expected.value("out", json::object());
    const json got = actual.value("out", json::object());
    const bool mayLeaveOut = method == "setcurrentmdb" || method == "setodbcdatabase";
    if (wanted == got || (mayLeaveOut && wanted.empty())) {
        return {};
    }
    return "expected out " + wanted.dump() + " got " + got.dump();
}

}  // namespace

std::string compareText(std::string_view expected, std::string_view actual) {
    if (expected == actual) {
        return {};
    }
    const auto [e, a] =
        std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
    const auto at = static_cast<std::size_t>(e - expected.begin());
    const std::size_t from = at < 60 ? 0 : at - 60;
    return "at " + std::to_string(at) + "\n  expected ..." +
           std::string(expected.substr(from, 160)) + "\n  got      ..." +
           std::string(actual.substr(std::min(from, actual.size()), 160));
}

std::string compareXml(std::string_view expected, std::string_view actual) {
    return compareText(canonical(expected), canonical(actual));
}

std::string compareLog(std::string_view expected, std::string_view actual) {
    const std::vector<std::string> wanted = linesOf(expected);
    const std::vector<std::string> got = linesOf(actual);
    std::size_t w = 0;
    std::size_t g = 0;
    while (w < wanted.size() && g < got.size()) {
        if (wanted[w] == databaseFault && isErrorLine(got[g])) {
            while (w < wanted.size() && wanted[w] == databaseFault) {
                ++w;
            }
            ++g;
            while (g < got.size() && isErrorLine(got[g]) &&
                   (w == wanted.size() || got[g] != wanted[w])) {
                ++g;
            }
        } else if (wanted[w] == got[g]) {
            ++w;
            ++g;
        } else {
            break;
        }
    }
    if (w == wanted.size() && g == got.size()) {
        return {};
    }
    return compareText(w < wanted.size() ? wanted[w] : "(no more lines)",
                       g < got.size() ? got[g] : "(no more lines)");
}

std::string compareAnswer(const json& step, const json& actual, bool isAfterFault) {
    const json& expected = step["answer"];
    for (const char* kind : {"fault", "invalid"}) {
        if (expected.contains(kind) && actual.contains(kind)) {
            return {};
        }
    }
    if (!expected.contains("result") || !actual.contains("result")) {
        return "expected " + expected.dump().substr(0, 300) + " got " +
               actual.dump().substr(0, 300);
    }
    const json& wanted = expected["result"];
    const json& got = actual["result"];
    if (wanted.is_string() && got.is_string()) {
        const std::string difference = compareResult(step, wanted, got, isAfterFault);
        if (!difference.empty()) {
            return difference;
        }
    } else if (wanted != got) {
        return "expected " + wanted.dump() + " got " + got.dump();
    }
    return compareOut(step, expected, actual);
}

}  // namespace tandril::test
