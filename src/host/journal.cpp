#include "host/journal.h"

#include <optional>
#include <string_view>
#include <utility>

#include "host/json_response.h"
#include "surface/json_text.h"

namespace tandril::host {
namespace {

using nlohmann::ordered_json;

constexpr std::string_view filePath = "C:\\Vorn Tandril\\PageJournal.json";
constexpr std::string_view damagedFile = "C:\\Vorn Tandril\\PageJournal.damaged.json";

struct Entry {
    std::int64_t revision = 0;
    ordered_json content;
};

// The two members of a text; nothing when it is no object with both.
std::optional<Entry> parse(const std::string& text) {
    nlohmann::json value;
    try {
        value = surface::parseJson(text);
    } catch (const surface::InvalidJson&) {
        return std::nullopt;
    }
    const bool isEntry = value.is_object() && value.contains("content") &&
                         value.contains("revision") && value["revision"].is_number_unsigned();
    if (!isEntry) {
        return std::nullopt;
    }
    return Entry{value["revision"].get<std::int64_t>(), value["content"]};
}

}  // namespace

Journal::State Journal::load() const {
    if (!files_.fileExists(filePath)) {
        return {};
    }
    std::optional<Entry> entry = parse(files_.read(filePath));
    if (!entry) {
        return {0, nullptr, true};
    }
    return {entry->revision, std::move(entry->content), false};
}

Response Journal::read() const {
    return answer(200, load());
}

Response Journal::answer(int status, State state) {
    ordered_json body = {{"revision", state.revision}, {"content", std::move(state.content)}};
    if (state.isDamaged) {
        body["damaged"] = true;
    }
    return jsonResponse(status, body);
}

Response Journal::write(const std::string& body) {
    std::optional<Entry> entry = parse(body);
    if (!entry) {
        return jsonResponse(400, {{"invalid", "an object with revision and content is wanted"}});
    }
    State state = load();
    if (entry->revision != state.revision) {
        return answer(409, std::move(state));
    }
    if (state.isDamaged) {
        files_.rename(filePath, damagedFile);
    }
    const std::int64_t next = state.revision + 1;
    const ordered_json file = {{"revision", next}, {"content", std::move(entry->content)}};
    const std::string line = surface::toLine(file) + '\n';
    files_.replace(filePath, line, platform::Durability::Durable);
    return jsonResponse(200, {{"revision", next}});
}

}  // namespace tandril::host
