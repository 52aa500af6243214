#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/file_system.h"

namespace tandril::bench {

// The least that can be done with the files of a call: bare pugixml with its default settings, the
// component's own durable write, and nothing else.
struct Floor {
    // A file that gets so many bytes of whatever content.
    struct Filled {
        std::string path;
        std::size_t bytes;
    };

    // Documents that are parsed: files of this machine, and texts that the call is given.
    std::vector<std::string> read;
    std::vector<const std::string*> given;
    // A file of the system that the first of these documents is serialised into, durably; "": none.
    std::string changed;
    // Files of the system that are replaced durably, appended to, and files of this machine that
    // are written plainly.
    std::vector<Filled> replaced;
    std::vector<Filled> appended;
    std::vector<Filled> written;

    void run(platform::FileSystem& files) const;
};

// Makes the tree of a file of this machine, and nothing of it.
void parse(const std::string& path);

}  // namespace tandril::bench
