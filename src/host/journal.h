#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "host/http_message.h"
#include "platform/file_system.h"

namespace tandril::host {

// What the page must know again after a crash, an upload under way above all: one JSON value in a
// file of the home. Each change counts its revision up, and one that was made from an older
// revision is refused, so that no window overwrites what another one wrote. Nothing is kept in
// memory. Not safe for concurrent use.
class Journal {
  public:
    explicit Journal(platform::FileSystem& files) : files_(files) {}

    // 200 {"revision":N,"content":VALUE}; revision 0 and null when nothing was written yet. The
    // member "damaged" is true when the file is none of the journal's.
    Response read() const;

    // Takes {"revision":N,"content":VALUE}, N being the revision that was read: 200
    // {"revision":N+1} once the value is on the disk, 409 with what read() answers when there is
    // another revision by now, 400 when the body is none. A damaged file is put aside first. Throws
    // Fault when the value cannot be saved; the old one is still there then.
    Response write(const std::string& body);

  private:
    struct State {
        std::int64_t revision = 0;
        nlohmann::ordered_json content;
        bool isDamaged = false;
    };

    State load() const;
    static Response answer(int status, State state);

    platform::FileSystem& files_;
};

}  // namespace tandril::host
