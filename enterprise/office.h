#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "enterprise/language.h"
#include "enterprise/memory.h"
#include "enterprise/sample_folder.h"

namespace tandril::enterprise {

// An upload that is no upload; its text says why.
class BadUpload : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The office behind the server: what it hands out to the engineer, and what it makes of the
// engineer's uploads. Not safe for concurrent use.
class Office {
  public:
    // The local time as "yyyymmdd hhmmss".
    using Clock = std::function<std::string()>;

    // Starts from the memory in the folder, or else from the sample orders. Without a folder the
    // memory ends with the program. `language` is that of answers which nobody has asked for yet.
    // Throws std::runtime_error when the memory cannot be read or written.
    Office(SampleFolder samples, const std::optional<std::filesystem::path>& folder, Clock clock,
           Language language);

    const std::string& fieldMapper(Language language) const {
        return samples_.fieldMapper(language);
    }
    const std::string& masterDataChanges() const { return samples_.masterDataChanges(); }

    // The order download: the sample orders as they stand until the first upload, then what the
    // office knows.
    std::string orders();

    // Takes an upload text and returns the upload report. An upload that was taken before, byte
    // for byte, gets its old answer and changes nothing. Throws BadUpload, or Fault when the
    // memory cannot be saved; nothing is taken then.
    std::string takeUpload(const std::string& upload, Language language);

  private:
    SampleFolder samples_;
    MemoryFile file_;
    Clock clock_;
    Memory memory_;

    Memory firstMemory(Language language) const;
    pugi::xml_node appendFile(Memory& memory, pugi::xml_node parent) const;
    void remember(Memory memory);
};

}  // namespace tandril::enterprise
