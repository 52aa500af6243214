#include "component/call.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

#include "component/paths.h"
#include "platform/unicode.h"
#include "xml/encoding.h"

namespace tandril {
namespace {

constexpr std::string_view lineEnd = "\r\n";

// A name for a damaged file, such as "Removed.damaged.xml", that does not replace an older one.
std::string unusedName(const platform::FileSystem& files, std::string_view path) {
    const std::string stem(path.substr(0, path.rfind('.')));
    std::string name = stem + ".damaged.xml";
    for (int number = 2; files.fileExists(name); ++number) {
        name = stem + ".damaged" + std::to_string(number) + ".xml";
    }
    return name;
}

// An entry of the log, handed on in the encoding of the log whenever a piece is full. An ordinary
// entry is one piece, so that entries of several processes do not mix.
class LogEntry {
  public:
    LogEntry(const platform::FileSystem& files, const platform::Content::Sink& sink)
        : files_(files), sink_(sink) {}

    void add(std::string_view text) {
        constexpr std::size_t pieceSize = platform::Content::pieceSize;
        while (piece_.size() + text.size() > pieceSize) {
            const std::size_t fits =
                platform::wholeCharacters(text, pieceSize - std::min(piece_.size(), pieceSize));
            piece_ += text.substr(0, fits);
            text.remove_prefix(fits);
            end();
        }
        piece_ += text;
    }
    void end() { sink_(files_.encodeAnsi(std::exchange(piece_, {}))); }

  private:
    const platform::FileSystem& files_;
    const platform::Content::Sink& sink_;
    std::string piece_;
};

}  // namespace

Call::Call(Module& module, std::string_view action)
    : module_(module), settings_(module.machine.registry), action_(action) {
    module_.machine.registry.refresh();
}

// The last store goes first, since two stores in memory are one too many.
store::OrderStore* Call::store() {
    if (loadedStore_ != LoadedStore::Whole) {
        loadedStore_ = LoadedStore::Whole;
        module_.lastStore.reset();
        if (auto loaded = store::OrderStore::from(xml::load(files(), paths::store))) {
            auto store = std::make_unique<store::OrderStore>(std::move(*loaded));
            store_ = store.get();
            module_.lastStore = std::move(store);
        }
    }
    return store_;
}

const store::OrderStore* Call::storeToRead() {
    if (loadedStore_ == LoadedStore::None) {
        loadedStore_ = LoadedStore::InParts;
        module_.lastStore.reset();
        module_.lastStore =
            store::OrderStore::toRead(xml::load(files(), paths::store, store::sectionNames));
    }
    return module_.lastStore.get();
}

bool Call::hasReport() {
    return report_ || files().fileExists(paths::report);
}

store::UploadReport* Call::report() {
    if (!hasLoadedReport_) {
        hasLoadedReport_ = true;
        if (auto document = xml::load(files(), paths::report)) {
            report_.emplace(std::move(*document));
        }
    }
    return report_ ? &*report_ : nullptr;
}

void Call::adoptReport(xml::Document document, std::string text) {
    hasLoadedReport_ = true;
    report_.emplace(std::move(document));
    adoptedText_ = std::move(text);
}

void Call::loadCopies() {
    if (copies_) {
        return;
    }
    if (auto document = xml::load(files(), paths::removed)) {
        copies_.emplace(std::move(*document));
        return;
    }
    if (files().fileExists(paths::removed)) {
        files().rename(paths::removed, unusedName(files(), paths::removed));
    }
    copies_.emplace();
}

void Call::keepCopy(const store::RecordKey& key, xml::Node record,
                    store::RemovedRecords::Reason reason) {
    if (store::stateOf(record) != store::state::downloaded) {
        loadCopies();
        copies_->add(key, record, reason, module_.machine.clock.generalDate());
    }
}

void Call::saveCopies() {
    if (!copies_ || !copies_->isChanged()) {
        return;
    }
    const store::RemovedRecords copies = std::move(*copies_);
    copies_.reset();
    files().replace(paths::removed, copies.content(), platform::Durability::Durable);
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

std::string Call::fail(std::string_view code, const std::vector<LogLine>& more) {
    std::string text = failureText(code);
    setError(text);
    std::vector<LogLine> lines{errorLine(text)};
    lines.insert(lines.end(), more.begin(), more.end());
    log(lines);
    return text;
}

std::optional<std::string> Call::failWithoutStore(const std::vector<LogLine>& more) {
    return store() == nullptr ? std::optional(fail("SLBEU0260", more)) : std::nullopt;
}

std::optional<std::string> Call::failWithoutStoreToRead() {
    return storeToRead() == nullptr ? std::optional(fail("SLBEU0260")) : std::nullopt;
}

std::optional<std::string> Call::failWithoutMapper() {
    return mapper() == nullptr ? std::optional(fail("SLBEU0261")) : std::nullopt;
}

void Call::log(const std::vector<LogLine>& lines) {
    if (action_.empty()) {
        return;
    }
    const std::string header = "|--------- Logged On:  " + module_.machine.clock.generalDate() +
                               "  For User Action: " + action_ + "  ----------\r\n";
    files().append(paths::log, platform::Content([&](const platform::Content::Sink& sink) {
                       LogEntry entry(files(), sink);
                       entry.add(header);
                       for (const LogLine& line : lines) {
                           entry.add(line.label);
                           entry.add(line.text);
                           entry.add(lineEnd);
                       }
                       entry.end();
                   }));
}

// The content that the file is to get; nothing when it is to stay as it is.
std::optional<platform::Content> Call::newStore() const {
    const bool isChanged = store_ != nullptr && store_->isChanged();
    return isChanged ? std::optional(store_->document().content()) : std::nullopt;
}

std::optional<platform::Content> Call::newReport() {
    if (report_ && report_->isChanged()) {
        return report_->document().content();
    }
    if (adoptedText_.empty()) {
        return std::nullopt;
    }
    if (std::optional<std::string> encoded = xml::encodedAsDeclared(adoptedText_)) {
        adoptedText_ = std::move(*encoded);
    }
    return platform::Content(adoptedText_);
}

// Copies come first: no record leaves the store before its copy is safe. What could not be saved
// once is not tried again behind a fault that the caller has been told of.
void Call::save() {
    if (hasSaved_) {
        return;
    }
    hasSaved_ = true;
    saveCopies();
    std::vector<platform::NewContent> changed;
    if (auto store = newStore()) {
        changed.push_back({paths::store, std::move(*store)});
    }
    if (auto report = newReport()) {
        changed.push_back({paths::report, std::move(*report)});
    }
    files().replaceTogether(changed);
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
