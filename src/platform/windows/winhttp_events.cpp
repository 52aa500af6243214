#include "platform/windows/winhttp_events.h"

namespace tandril::platform {

DWORD_PTR WinHttpEvents::watch(HINTERNET request, const std::shared_ptr<WinHttpEvents>& events) {
    constexpr DWORD watched = WINHTTP_CALLBACK_FLAG_ALL_COMPLETIONS | WINHTTP_CALLBACK_FLAG_HANDLES;
    // WinHTTP's own share, which goes with the last thing that it tells.
    auto share = std::make_unique<Share>(events);
    auto context = reinterpret_cast<DWORD_PTR>(share.get());
    if (!::WinHttpSetOption(request, WINHTTP_OPTION_CONTEXT_VALUE, &context, sizeof context) ||
        ::WinHttpSetStatusCallback(request, onStatus, watched, 0) ==
            WINHTTP_INVALID_STATUS_CALLBACK) {
        return 0;
    }
    static_cast<void>(share.release());
    return context;
}

std::optional<WinHttpEvents::Event> WinHttpEvents::next(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    changed_.wait_for(lock, time, [this] { return isBrokenOff_ || !events_.empty(); });
    if (isBrokenOff_ || events_.empty()) return std::nullopt;
    const Event event = events_.front();
    events_.pop_front();
    return event;
}

void WinHttpEvents::breakOff() {
    const std::lock_guard lock(mutex_);
    isBrokenOff_ = true;
    changed_.notify_all();
}

void CALLBACK WinHttpEvents::onStatus(HINTERNET, DWORD_PTR context, DWORD kind, void* details,
                                      DWORD size) {
    auto* share = reinterpret_cast<Share*>(context);
    if (kind == WINHTTP_CALLBACK_STATUS_HANDLE_CLOSING) {
        delete share;
        return;
    }
    const bool isError = kind == WINHTTP_CALLBACK_STATUS_REQUEST_ERROR;
    (*share)->tell({kind, isError ? static_cast<WINHTTP_ASYNC_RESULT*>(details)->dwError : size});
}

void WinHttpEvents::tell(const Event& event) {
    const std::lock_guard lock(mutex_);
    events_.push_back(event);
    changed_.notify_all();
}

}  // namespace tandril::platform
