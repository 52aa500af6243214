#include "platform/home/reg_text.h"

#include <algorithm>
#include <set>
#include <utility>

#include "platform/ascii.h"
#include "platform/fault.h"
#include "platform/registry_number.h"
#include "platform/unicode.h"

namespace tandril::platform {
namespace {

// Whether `folded` is the key `parent` or one below it, both in lower case.
bool isAtOrBelow(std::string_view folded, std::string_view parent) {
    return folded.starts_with(parent) &&
           (folded.size() == parent.size() || folded[parent.size()] == '\\');
}

void requireUtf8(std::string_view what, std::string_view text) {
    if (!isUtf8(text)) {
        throw Fault("cannot change the registry: the " + std::string(what) + " is not UTF-8");
    }
}

bool isBlank(const RegLine& line) {
    return line.type == RegType::None &&
           line.head.find_first_not_of(" \t\r\n") == std::string::npos && line.data.empty();
}

// A line of a file that lacks its last line end gets it before something follows.
void endLine(RegLine& line, const std::string& lineEnd) {
    std::string& last = line.type == RegType::None && line.data.empty() ? line.head : line.tail;
    if (!last.ends_with('\n')) last += lineEnd;
}

RegLine plainLine(std::string text) {
    RegLine line;
    line.head = std::move(text);
    return line;
}

void change(RegLine& line, RegType type, std::string value, std::string data) {
    if (line.type == type && line.value == value) return;
    line.type = type;
    line.value = std::move(value);
    line.data = std::move(data);
}

}  // namespace

RegText::RegText() {
    RegSection preamble;
    preamble.lines.push_back(plainLine(std::string(regHeader) + document_.lineEnd));
    document_.sections.push_back(std::move(preamble));
}

bool RegText::hasKey(std::string_view key) const {
    const std::string folded = foldAscii(key);
    return std::any_of(
        document_.sections.begin(), document_.sections.end(),
        [&](const RegSection& section) { return isAtOrBelow(section.folded, folded); });
}

std::vector<std::string> RegText::subKeys(std::string_view key) const {
    const std::string folded = foldAscii(key);
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const RegSection& section : document_.sections) {
        if (!isAtOrBelow(section.folded, folded) || section.key.size() == key.size()) continue;
        const std::string_view below = std::string_view(section.key).substr(key.size() + 1);
        const std::string_view name = below.substr(0, below.find('\\'));
        if (seen.insert(foldAscii(name)).second) names.emplace_back(name);
    }
    return names;
}

std::vector<std::string> RegText::valueNames(std::string_view key) const {
    const std::string folded = foldAscii(key);
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const RegSection& section : document_.sections) {
        if (section.folded != folded) continue;
        for (const RegLine& line : section.lines) {
            const bool listed = line.type != RegType::None && !line.name.empty();
            if (listed && seen.insert(line.name).second) names.push_back(line.name);
        }
    }
    return names;
}

const RegLine* RegText::find(std::string_view key, std::string_view name) const {
    const std::string folded = foldAscii(key);
    const RegLine* found = nullptr;
    for (const RegSection& section : document_.sections) {
        if (section.folded != folded) continue;
        for (const RegLine& line : section.lines) {
            if (line.type != RegType::None && line.name == name) found = &line;
        }
    }
    return found;
}

RegLine* RegText::find(std::string_view key, std::string_view name) {
    return const_cast<RegLine*>(std::as_const(*this).find(key, name));
}

std::optional<std::string> RegText::read(std::string_view key, std::string_view name) const {
    const RegLine* line = find(key, name);
    if (line == nullptr) return std::nullopt;
    return line->value;
}

// The key as far as it exists, in the letters in which it stands in the file.
std::string RegText::storedSpelling(std::string_view key) const {
    const std::string folded = foldAscii(key);
    for (const RegSection& section : document_.sections) {
        if (isAtOrBelow(section.folded, folded)) return section.key.substr(0, key.size());
    }
    return std::string(key);
}

void RegText::addBlankLine() {
    RegSection& last = document_.sections.back();
    endLine(last.lines.back(), document_.lineEnd);
    if (!isBlank(last.lines.back())) last.lines.push_back(plainLine(document_.lineEnd));
}

RegSection& RegText::addSection(const std::string& key) {
    addBlankLine();
    RegSection section;
    section.key = key;
    section.folded = foldAscii(key);
    section.lines.push_back(plainLine("[" + key + "]" + document_.lineEnd));
    section.lines.push_back(plainLine(document_.lineEnd));
    return document_.sections.emplace_back(std::move(section));
}

void RegText::addKey(std::string_view key) {
    requireUtf8("name of a key", key);
    std::string spelled;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        const std::size_t begin = end == 0 ? 0 : end + 1;
        end = key.find('\\', begin);
        const std::string_view part = key.substr(begin, end - begin);
        if (part.empty()) {
            throw Fault("cannot create the registry key \"" + std::string(key) + "\"");
        }
        if (begin != 0) spelled += '\\';
        spelled = storedSpelling(spelled.append(part));
        // The root itself is always there.
        if (begin != 0 && !hasKey(spelled)) addSection(spelled);
    }
}

// Where a value is new it follows the last one of its key.
RegLine& RegText::findOrAdd(std::string_view key, std::string_view name) {
    requireUtf8("name of a value", name);
    if (RegLine* line = find(key, name)) return *line;
    const std::string folded = foldAscii(key);
    auto& sections = document_.sections;
    auto section = std::find_if(sections.begin(), sections.end(),
                                [&](const RegSection& each) { return each.folded == folded; });
    if (section == sections.end()) {
        if (!hasKey(key)) {
            throw Fault("cannot set the value \"" + std::string(name) +
                        "\": the registry has no key \"" + std::string(key) + "\"");
        }
        addSection(storedSpelling(key));
        section = sections.end() - 1;
    }
    auto& lines = section->lines;
    const auto last = std::find_if(lines.rbegin(), lines.rend() - 1,
                                   [](const RegLine& each) { return each.type != RegType::None; });
    endLine(*last, document_.lineEnd);
    RegLine line;
    line.name = name;
    line.head = name.empty() ? "@=" : quoteReg(name) + "=";
    line.tail = document_.lineEnd;
    return *lines.insert(last.base(), std::move(line));
}

void RegText::setText(std::string_view key, std::string_view name, std::string_view text) {
    requireUtf8("text", text);
    change(findOrAdd(key, name), RegType::Text, std::string(text), quoteReg(text));
}

void RegText::setNumber(std::string_view key, std::string_view name, std::uint32_t number) {
    change(findOrAdd(key, name), RegType::Number, std::to_string(number), formatRegNumber(number));
}

bool RegText::setExisting(std::string_view key, std::string_view name, std::string_view text) {
    RegLine* line = find(key, name);
    if (line == nullptr) return false;
    requireUtf8("text", text);
    if (line->type == RegType::Number) {
        setNumber(key, name, leadingNumber(text));
    } else if (line->type == RegType::Text) {
        setText(key, name, text);
    } else if (line->type == RegType::HexText) {
        const std::string prefix = line->data.substr(0, line->data.find(':') + 1);
        change(*line, RegType::HexText, std::string(text),
               formatRegHexText(prefix, text, line->head.size(), document_.lineEnd));
    } else {
        throw Fault("cannot set the value \"" + std::string(name) + "\" of the registry key \"" +
                    std::string(key) + "\": it is neither a text nor a number");
    }
    return true;
}

}  // namespace tandril::platform
