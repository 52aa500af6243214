#include "component/call.h"

#include <exception>

#include "component/paths.h"

namespace tandril {

Call::Call(Module& module, std::string_view action)
    : module_(module), settings_(module.machine.registry), action_(action) {
    module_.machine.registry.refresh();
}

store::OrderStore* Call::store() {
    if (!hasLoadedStore_) {
        hasLoadedStore_ = true;
        module_.lastStore = store::OrderStore::from(xml::load(files(), paths::store));
    }
    return module_.lastStore ? &*module_.lastStore : nullptr;
}

const mapper::FieldMapper* Call::mapper() {
    if (!hasLoadedMapper_) {
        hasLoadedMapper_ = true;
        if (auto document = xml::load(files(), paths::fieldMapper)) {
            mapper_.emplace(std::move(*document));
        }
    }
    return mapper_ ? &*mapper_ : nullptr;
}

std::string Call::label(std::string_view code) {
    const mapper::FieldMapper* texts = mapper();
    return std::string(texts != nullptr ? texts->text(code).value_or("") : "");
}

std::string Call::failureText(std::string_view code) {
    std::string text = label(code);
    return text.empty() ? std::string(code) : text;
}

std::string Call::fail(std::string_view code, const std::vector<std::string>& more) {
    std::string text = failureText(code);
    setError(text);
    std::vector<std::string> lines{errorLine(text)};
    lines.insert(lines.end(), more.begin(), more.end());
    log(lines);
    return text;
}

void Call::log(const std::vector<std::string>& lines) {
    if (action_.empty()) {
        return;
    }
    std::string entry = "|--------- Logged On:  " + module_.machine.clock.generalDate() +
                        "  For User Action: " + action_ + "  ----------\r\n";
    for (const std::string& line : lines) {
        entry += line;
        entry += "\r\n";
    }
    files().append(paths::log, files().encodeAnsi(entry));
}

std::string Call::errorLine(std::string_view text) {
    return "Error =   " + std::string(text);
}

std::string Call::xmlLine(std::string_view xml) {
    return "iXml =   " + std::string(xml);
}

void Call::save() {
    if (hasLoadedStore_ && module_.lastStore && module_.lastStore->isChanged()) {
        xml::save(module_.lastStore->document(), files(), paths::store,
                  platform::Durability::Durable);
    }
}

void Call::finish() {
    save();
    if (clearsError_) {
        setError("");
    }
    settings_.flush();
}

void Call::abandon() noexcept {
    // The fault that ended the call is the one to report, not what it leads to here.
    try {
        save();
    } catch (const std::exception&) {
    }
    try {
        settings_.flush();
    } catch (const std::exception&) {
    }
}

}  // namespace tandril
