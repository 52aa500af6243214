#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "enterprise/records.h"

namespace tandril::enterprise {

// Everything that the office remembers, one document:
//
//   <enterprise uploads="3">
//     <harbrook>...</harbrook>            the orders as the office knows them
//     <refused><record .../></refused>    records refused and not taken since
//     <waiting><File .../></waiting>      answers that no report has carried yet
//     <answered><upload size="" fingerprint=""><UploadReport>...</UploadReport></upload></answered>
//   </enterprise>
//
// A change is made on a copy, which takes the place of the old memory once it is saved.
class Memory {
  public:
    using Node = pugi::xml_node;

    Memory();
    // Throws std::runtime_error when the text is not such a document.
    static Memory parse(std::string_view text);

    Memory copy() const;
    std::string text() const;

    Node book() const { return part("harbrook"); }
    Node waiting() const { return part("waiting"); }

    // Counts an upload; returns its number, from 1.
    int countUpload();
    int uploads() const;

    // The report that this upload text was answered with; nothing when it is new.
    std::optional<std::string> answerTo(std::string_view upload) const;
    bool hasAnswered() const;
    // Keeps the answer to an upload text. Only the last hundred are kept.
    void rememberAnswer(std::string_view upload, Node report);

    bool isRefused(const RecordKey& key) const;
    // Whether any record of the order, or of its activity if one is given, is refused.
    bool hasRefusedIn(const std::string& order, const std::string& activity = "") const;
    void setRefused(const RecordKey& key, bool refused);

  private:
    std::unique_ptr<pugi::xml_document> document_;

    Node part(const char* name) const { return document_->document_element().child(name); }
    Node refusedRecord(const RecordKey& key) const;
};

// Where the memory outlives the program: the file "enterprise.xml" of a folder. Without a folder
// nothing is kept.
class MemoryFile {
  public:
    // Creates the folder. Throws std::runtime_error when that fails.
    explicit MemoryFile(const std::optional<std::filesystem::path>& folder);

    // Nothing when there is no file yet. Throws std::runtime_error for a damaged one.
    std::optional<Memory> load() const;
    // Whole and durably, or throws and leaves the file as it was.
    void save(const Memory& memory) const;

  private:
    std::optional<std::filesystem::path> file_;
};

}  // namespace tandril::enterprise
