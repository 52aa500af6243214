#pragma once

#include <windows.h>
// Needs the types of windows.h.
#include <winhttp.h>

#include <array>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

namespace tandril::platform {

// What WinHTTP tells about one request, from threads of its own, for the one that waits for it.
// Once the request is closed it may still write what it was asked for for a while, so that the
// memory for that is here and stays until WinHTTP has nothing more to tell.
class WinHttpEvents {
  public:
    struct Event {
        DWORD kind = 0;    // WINHTTP_CALLBACK_STATUS_...
        DWORD number = 0;  // of an error, or of the bytes that were read
    };

    // From now on `events` hears of the request. Returns the context to send the request with; 0
    // when that cannot be.
    static DWORD_PTR watch(HINTERNET request, const std::shared_ptr<WinHttpEvents>& events);

    // The next event. Nothing when none comes in that time, or when all is broken off.
    std::optional<Event> next(std::chrono::milliseconds time);

    void breakOff();

    // What is being sent, and what was read last. Not for use while WinHTTP is at it.
    std::string outgoing;
    std::array<char, std::size_t{64} * 1024> incoming{};

  private:
    using Share = std::shared_ptr<WinHttpEvents>;

    static void CALLBACK onStatus(HINTERNET request, DWORD_PTR context, DWORD kind, void* details,
                                  DWORD size);
    void tell(const Event& event);

    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Event> events_;
    bool isBrokenOff_ = false;
};

}  // namespace tandril::platform
