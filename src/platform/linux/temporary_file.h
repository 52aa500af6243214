#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/linux/descriptor.h"

namespace tandril::platform {

// A new file beside the one to replace. Removed when destroyed, unless renamed before.
//
// It is locked for as long as it has its temporary name. The system takes the lock back when the
// process ends, however it ends: a file of that name without a lock is what a killed process left,
// and goes when the same target is replaced the next time. Where the file system has no locks, such
// files stay.
class TemporaryFile {
  public:
    // For the file `target` in the open folder, which must stay open. Throws Fault.
    TemporaryFile(int folder, std::string_view target, mode_t mode, const Attempt& attempt);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void write(const Content& content, Durability durability);
    void renameTo(const std::string& name);
    int descriptor() const { return file_.get(); }

  private:
    Descriptor create(std::string_view target, mode_t mode);
    Descriptor claim(std::string name, mode_t mode);
    Descriptor open(std::string name, mode_t mode);

    int folder_;
    Attempt attempt_;
    std::string name_;
    Descriptor file_;
    bool renamed_ = false;
};

}  // namespace tandril::platform
