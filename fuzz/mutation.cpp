#include "mutation.h"

#include <algorithm>
#include <optional>
#include <set>

namespace tandril::fuzz {
namespace {

// A tag, or the text between two tags.
using Pieces = std::vector<std::string>;

// Values that no file of a home has.
constexpr std::string_view hostileValues[] = {
    "",     "'",      "''",     "&quot;", "&amp;#0;",        "\\..\\..\\x", "99999999999999999999",
    "-1",   "_",      "_32768", "0x10",   "20261301 250000", "%s%n",        "\xC3\xBC\xE2\x82\xAC",
    "\x01", "&#x85;", "]]&gt;", "--",     "20261115"};

Pieces split(std::string_view text) {
    Pieces pieces;
    while (!text.empty()) {
        const bool isTag = text.front() == '<';
        const std::size_t end = isTag ? text.find('>') : text.find('<');
        const std::size_t length = std::min(text.size(), isTag && end != text.npos ? end + 1 : end);
        pieces.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    return pieces;
}

bool isTag(const std::string& piece) {
    return piece.starts_with('<') && piece.size() > 1;
}
bool isMarkup(const std::string& piece) {
    return isTag(piece) && (piece[1] == '?' || piece[1] == '!');
}
bool isEnd(const std::string& piece) {
    return isTag(piece) && piece[1] == '/';
}
bool isStart(const std::string& piece) {
    return isTag(piece) && !isMarkup(piece) && !isEnd(piece);
}
bool isEmptyElement(const std::string& piece) {
    return isStart(piece) && piece.ends_with("/>");
}

std::string_view nameOf(std::string_view tag) {
    tag.remove_prefix(tag.starts_with("</") ? 2 : 1);
    return tag.substr(0, tag.find_first_of(" \t\r\n/>"));
}

// The places of the quotes around each value of an attribute.
struct Quoted {
    std::size_t first, last;
};
std::vector<Quoted> quotedIn(const std::string& tag) {
    std::vector<Quoted> found;
    for (std::size_t at = tag.find_first_of("\"'"); at != std::string::npos;
         at = tag.find_first_of("\"'", at + 1)) {
        const std::size_t end = tag.find(tag[at], at + 1);
        if (end == std::string::npos) break;
        found.push_back({at, end});
        at = end;
    }
    return found;
}

// Makes the changes to one document.
class Mutation {
  public:
    Mutation(std::string_view text, const Vocabulary& words, std::minstd_rand& random)
        : pieces_(split(text)), words_(words), random_(random) {}

    void step();
    std::string text() const {
        std::string whole;
        for (const std::string& piece : pieces_) whole += piece;
        return whole;
    }

  private:
    using Position = Pieces::difference_type;
    struct Range {
        Position begin, end;
    };
    struct Attribute {
        std::string* tag;
        Quoted value;
    };

    std::size_t below(std::size_t limit) { return random_() % limit; }
    Position any(bool (*matches)(const std::string&));
    std::optional<Attribute> anyAttribute();
    Range anyElement();
    std::string anyValue();
    std::string_view anyName() { return words_.names[below(words_.names.size())]; }

    void repeatElement();
    void moveElement();
    void dropElement();
    void renameElement();
    void wrapElement();
    void setText();
    void setAttribute();
    void dropAttribute();
    void addAttribute();
    void addElement();
    void dropPiece();

    Pieces pieces_;
    const Vocabulary& words_;
    std::minstd_rand& random_;
};

// A piece of that kind, -1 when there is none. The root is seldom what is worth changing.
Mutation::Position Mutation::any(bool (*matches)(const std::string&)) {
    std::vector<Position> found;
    for (std::size_t i = 0; i < pieces_.size(); ++i) {
        if (matches(pieces_[i])) found.push_back(static_cast<Position>(i));
    }
    if (found.empty()) return -1;
    if (found.size() > 1 && below(16) != 0) found.erase(found.begin());
    return found[below(found.size())];
}

Mutation::Range Mutation::anyElement() {
    const Position begin = any(isStart);
    if (begin < 0) return {0, 0};
    int depth = 0;
    for (auto i = begin; i < static_cast<Position>(pieces_.size()); ++i) {
        const std::string& piece = pieces_[static_cast<std::size_t>(i)];
        depth += isStart(piece) && !isEmptyElement(piece) ? 1 : 0;
        depth -= isEnd(piece) ? 1 : 0;
        if (depth <= 0) return {begin, i + 1};
    }
    return {begin, begin + 1};
}

std::string Mutation::anyValue() {
    const std::size_t choice = below(8);
    if (choice == 0) return std::string(hostileValues[below(std::size(hostileValues))]);
    if (choice == 1) return std::string(1 + below(300), 'x');
    return words_.values[below(words_.values.size())];
}

void Mutation::repeatElement() {
    const Range range = anyElement();
    const Pieces copy(pieces_.begin() + range.begin, pieces_.begin() + range.end);
    pieces_.insert(pieces_.begin() + range.end, copy.begin(), copy.end());
}

void Mutation::moveElement() {
    const Range range = anyElement();
    const Position target = any(isTag);
    if (target < 0) return;
    const Pieces copy(pieces_.begin() + range.begin, pieces_.begin() + range.end);
    pieces_.insert(pieces_.begin() + target, copy.begin(), copy.end());
}

void Mutation::dropElement() {
    const Range range = anyElement();
    pieces_.erase(pieces_.begin() + range.begin, pieces_.begin() + range.end);
}

void Mutation::renameElement() {
    const Range range = anyElement();
    if (range.begin == range.end) return;
    const std::string name(anyName());
    for (const Position i : {range.begin, range.end - 1}) {
        std::string& tag = pieces_[static_cast<std::size_t>(i)];
        if (isStart(tag) && i == range.begin) tag.replace(1, nameOf(tag).size(), name);
        if (isEnd(tag)) tag.replace(2, nameOf(tag).size(), name);
    }
}

void Mutation::wrapElement() {
    const Range range = anyElement();
    const std::string name(anyName());
    pieces_.insert(pieces_.begin() + range.end, "</" + name + ">");
    pieces_.insert(pieces_.begin() + range.begin, "<" + name + ">");
}

void Mutation::setText() {
    const Position at = any(isStart);
    if (at < 0) return;
    std::string& tag = pieces_[static_cast<std::size_t>(at)];
    if (isEmptyElement(tag)) {
        const std::string name(nameOf(tag));
        tag.replace(tag.size() - 2, 2, ">" + anyValue() + "</" + name + ">");
        return;
    }
    const std::size_t next = static_cast<std::size_t>(at) + 1;
    if (next < pieces_.size() && !isTag(pieces_[next])) {
        pieces_[next] = anyValue();
    } else {
        tag += anyValue();
    }
}

std::optional<Mutation::Attribute> Mutation::anyAttribute() {
    const Position at =
        any([](const std::string& p) { return isStart(p) && !quotedIn(p).empty(); });
    if (at < 0) return std::nullopt;
    std::string& tag = pieces_[static_cast<std::size_t>(at)];
    const auto quoted = quotedIn(tag);
    return Attribute{&tag, quoted[below(quoted.size())]};
}

void Mutation::setAttribute() {
    if (const auto found = anyAttribute()) {
        const auto [first, last] = found->value;
        found->tag->replace(first, last - first + 1, '"' + anyValue() + '"');
    }
}

void Mutation::dropAttribute() {
    if (const auto found = anyAttribute()) {
        const auto [first, last] = found->value;
        const std::size_t blank = found->tag->find_last_of(" \t\r\n", first);
        if (blank != std::string::npos) found->tag->erase(blank, last + 1 - blank);
    }
}

void Mutation::addAttribute() {
    const Position at = any(isStart);
    if (at < 0) return;
    std::string& tag = pieces_[static_cast<std::size_t>(at)];
    const std::string name(anyName());
    tag.insert(1 + nameOf(tag).size(), " " + name + "=\"" + anyValue() + "\"");
}

void Mutation::addElement() {
    const Position at = any(isTag);
    if (at < 0) return;
    const std::string name(anyName());
    pieces_.insert(pieces_.begin() + at, "<" + name + ">" + anyValue() + "</" + name + ">");
}

// The one change that leaves hardly a document well-formed.
void Mutation::dropPiece() {
    const Position at = any(isTag);
    if (at >= 0) pieces_.erase(pieces_.begin() + at);
}

void Mutation::step() {
    static constexpr void (Mutation::*steps[])() = {
        &Mutation::repeatElement, &Mutation::moveElement,  &Mutation::dropElement,
        &Mutation::renameElement, &Mutation::wrapElement,  &Mutation::setText,
        &Mutation::setText,       &Mutation::setAttribute, &Mutation::setAttribute,
        &Mutation::dropAttribute, &Mutation::addAttribute, &Mutation::addElement,
        &Mutation::dropPiece};
    (this->*steps[below(std::size(steps))])();
}

}  // namespace

Vocabulary Vocabulary::of(const std::vector<std::string>& documents) {
    std::set<std::string> names;
    std::set<std::string> values;
    for (const std::string& document : documents) {
        for (const std::string& piece : split(document)) {
            if (!isTag(piece)) {
                values.insert(piece);
            } else if (isStart(piece)) {
                names.emplace(nameOf(piece));
                for (const Quoted& quoted : quotedIn(piece)) {
                    values.insert(piece.substr(quoted.first + 1, quoted.last - quoted.first - 1));
                    const std::string_view before = std::string_view(piece).substr(0, quoted.first);
                    const std::size_t blank = before.find_last_of(" \t\r\n");
                    names.emplace(before.substr(blank + 1, before.size() - blank - 2));
                }
            }
        }
    }
    return {{names.begin(), names.end()}, {values.begin(), values.end()}};
}

std::string mutate(std::string_view text, const Vocabulary& words, std::minstd_rand& random) {
    Mutation mutation(text, words, random);
    for (std::size_t left = 1 + random() % 3; left > 0; --left) {
        mutation.step();
    }
    return mutation.text();
}

}  // namespace tandril::fuzz
