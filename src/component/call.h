#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "component/module.h"
#include "component/settings.h"
#include "mapper/field_mapper.h"
#include "store/order_store.h"
#include "store/removed_records.h"
#include "store/upload_report.h"
#include "xml/document.h"

namespace tandril {

// A line of the log, which may be as long as a store and is therefore put together in the entry
// only.
struct LogLine {
    std::string_view label;
    std::string_view text;
};

// One public call at work: loads each file at most once, holds what the call changes, and writes it
// back once when the call ends, also when a fault ended it. The error text, the action log and the
// labels are kept here, so that a method says only what it does.
class Call {
  public:
    // A call of an action by that name in the log; "" for a method that logs nothing.
    explicit Call(Module& module, std::string_view action = {});
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    Module& module() { return module_; }
    platform::FileSystem& files() { return module_.machine.files; }
    Settings& settings() { return settings_; }
    void setAction(std::string_view action) { action_ = action; }

    // The documents; null when the file cannot be loaded. A store that loads becomes the module's
    // last store, and one that does not empties it.
    store::OrderStore* store();
    // The store for a call that only looks at it: what it does not look at is not parsed. Such a
    // call does not ask for the other, which would load the file again.
    const store::OrderStore* storeToRead();
    store::UploadReport* report();
    const mapper::FieldMapper* mapper();

    // Whether there is an upload report, which may still be damaged.
    bool hasReport();
    // Makes the document that `text` is the upload report. It is stored as it is written there as
    // long as nothing changes in it.
    void adoptReport(xml::Document document, std::string text);

    // Keeps a copy of a record that is about to leave the store, unless the server has it just so.
    void keepCopy(const store::RecordKey& key, xml::Node record,
                  store::RemovedRecords::Reason reason);
    // Writes the copies now. When that fails they are dropped with the Fault: their records must
    // stay then.
    void saveCopies();

    // The text of a message code; "" for an unknown one, or without a field mapper.
    std::string label(std::string_view code);
    // The text of a failure: its label, or the code itself where there is none.
    std::string failureText(std::string_view code);

    std::string error() const { return settings_.error(); }
    void setError(std::string_view text) { settings_.setError(text); }
    // The error text is cleared when the call has ended well.
    void clearErrorAtEnd() { clearsError_ = true; }

    // Makes the text of the code the error text, logs it followed by `more` lines under the call's
    // action, and returns it.
    std::string fail(std::string_view code, const std::vector<LogLine>& more = {});
    // The same when the document cannot be loaded; nothing, and no failure, when it can.
    std::optional<std::string> failWithoutStore(const std::vector<LogLine>& more = {});
    std::optional<std::string> failWithoutStoreToRead();
    std::optional<std::string> failWithoutMapper();

    // Appends the action's header and then the lines to the log. Throws Fault when there is no log.
    void log(const std::vector<LogLine>& lines);
    static LogLine errorLine(std::string_view text) { return {"Error =   ", text}; }
    static LogLine xmlLine(std::string_view xml) { return {"iXml =   ", xml}; }

    // Writes what changed, which the call does once: what changes behind this is not saved any
    // more. Throws Fault when a file cannot be written.
    void save();
    // Saves what changed. finish() ends a call that went well and throws Fault when a file cannot
    // be written; abandon() ends one that a fault cut short and never throws.
    void finish();
    void abandon() noexcept;

  private:
    enum class LoadedStore { None, InParts, Whole };

    std::optional<platform::Content> newStore() const;
    std::optional<platform::Content> newReport();
    void loadCopies();

    Module& module_;
    Settings settings_;
    std::string action_;
    bool clearsError_ = false;
    LoadedStore loadedStore_ = LoadedStore::None;
    store::OrderStore* store_ = nullptr;  // the module's last store, when this call may change it
    bool hasLoadedReport_ = false;
    bool hasLoadedMapper_ = false;
    bool hasSaved_ = false;
    std::optional<store::UploadReport> report_;
    std::string adoptedText_;
    std::optional<store::RemovedRecords> copies_;
    std::optional<mapper::FieldMapper> mapper_;
};

// Whether a method's error text reads "1" while it runs.
enum class ErrorAtEntry { Kept, Reset };

// Runs the body of a public method as one call.
template <class Body>
auto run(Module& module, ErrorAtEntry entry, std::string_view action, Body body) {
    Call call(module, action);
    try {
        if (entry == ErrorAtEntry::Reset) {
            call.setError("1");
        }
        auto result = body(call);
        call.finish();
        return result;
    } catch (...) {
        call.abandon();
        throw;
    }
}

}  // namespace tandril
