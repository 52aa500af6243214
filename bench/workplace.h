#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "component/client20.h"
#include "component/module.h"
#include "platform/machine.h"

namespace tandril::bench {

// A home in a folder of its own on the disk, with an initialised component on it, a field mapper
// and no orders. The folder is removed when the object is destroyed.
class Workplace {
  public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    Client20& client() { return client_; }
    Module& module() { return module_; }
    platform::FileSystem& files() { return machine_->machine().files; }

    // Makes the store a copy of the file on this machine, or takes it away; the log and what
    // uploads and reports leave behind is taken away, too.
    void putStore(const std::string& file);
    void removeStore();

    // Where a file of the system lies on this machine.
    std::string pathOf(std::string_view systemPath) const;

  private:
    void tidy();

    std::string folder_;
    std::unique_ptr<platform::OwnedMachine> machine_;
    Module module_;
    Client20 client_;
};

// A file on this machine with that content, removed when the object is destroyed.
class TemporaryFile {
  public:
    explicit TemporaryFile(std::string_view content);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

// Throws std::runtime_error with that text unless it holds.
void require(bool holds, const char* what);

// The content of a file of this machine. Throws std::runtime_error.
std::string readWhole(const std::string& path);
void writeWhole(const std::string& path, std::string_view bytes);

}  // namespace tandril::bench
