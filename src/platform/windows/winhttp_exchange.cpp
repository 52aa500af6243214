#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "platform/http_exchange.h"
#include "platform/windows/wide.h"
#include "platform/windows/winhttp_events.h"

namespace tandril::platform {
namespace {

constexpr DWORD pieceSize = 64 * 1024;

struct CloseInternet {
    void operator()(HINTERNET handle) const { ::WinHttpCloseHandle(handle); }
};
using Internet = std::unique_ptr<std::remove_pointer_t<HINTERNET>, CloseInternet>;

ExchangeEnd endOf(DWORD error) {
    switch (error) {
        case ERROR_WINHTTP_CANNOT_CONNECT:
        case ERROR_WINHTTP_NAME_NOT_RESOLVED:
        case ERROR_WINHTTP_INVALID_URL:
        case ERROR_WINHTTP_UNRECOGNIZED_SCHEME:
            return ExchangeEnd::Unreachable;
        case ERROR_WINHTTP_SECURE_CHANNEL_ERROR:
            return ExchangeEnd::Insecure;
        case ERROR_WINHTTP_SECURE_FAILURE:
            return ExchangeEnd::Untrusted;
        default:
            return ExchangeEnd::BrokenOff;
    }
}

// The address of a server, taken apart.
struct Address {
    std::wstring host;
    INTERNET_PORT port = 0;
    bool isSecure = false;
};

std::optional<Address> parse(const std::string& server) {
    const std::wstring url = toWide(server);
    URL_COMPONENTS parts{};
    parts.dwStructSize = sizeof parts;
    parts.dwHostNameLength = static_cast<DWORD>(-1);
    if (!::WinHttpCrackUrl(url.c_str(), 0, 0, &parts)) return std::nullopt;
    return Address{std::wstring(parts.lpszHostName, parts.dwHostNameLength), parts.nPort,
                   parts.nScheme == INTERNET_SCHEME_HTTPS};
}

// One request as WinHTTP has it. Each step waits for its end; after the first that fails nothing
// more may be tried.
class WinHttpRequest {
  public:
    WinHttpRequest(HINTERNET connection, const HttpQuestion& question, bool isSecure,
                   std::shared_ptr<WinHttpEvents> events, std::chrono::milliseconds timeout)
        : events_(std::move(events)),
          timeout_(timeout),
          request_(::WinHttpOpenRequest(
              connection, toWide(question.method).c_str(), toWide(question.target).c_str(), nullptr,
              WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES,
              WINHTTP_FLAG_ESCAPE_DISABLE | WINHTTP_FLAG_ESCAPE_DISABLE_QUERY |
                  (isSecure ? WINHTTP_FLAG_SECURE : 0))) {
        context_ = request_ != nullptr ? WinHttpEvents::watch(request_, events_) : 0;
        isGood_ = context_ != 0 && prepare(question, isSecure);
        if (!isGood_) error_ = ::GetLastError();
    }
    ~WinHttpRequest() {
        if (request_ != nullptr) ::WinHttpCloseHandle(request_);
    }
    WinHttpRequest(const WinHttpRequest&) = delete;
    WinHttpRequest& operator=(const WinHttpRequest&) = delete;

    bool send(const std::string& body) {
        events_->outgoing = body;
        const auto size = static_cast<DWORD>(body.size());
        step(::WinHttpSendRequest(request_, WINHTTP_NO_ADDITIONAL_HEADERS, 0, nullptr, 0, size,
                                  context_),
             WINHTTP_CALLBACK_STATUS_SENDREQUEST_COMPLETE);
        if (error_ == ERROR_WINHTTP_TIMEOUT) error_ = ERROR_WINHTTP_CANNOT_CONNECT;
        for (DWORD sent = 0; isGood_ && sent < size;) {
            const DWORD piece = std::min(size - sent, pieceSize);
            step(::WinHttpWriteData(request_, events_->outgoing.data() + sent, piece, nullptr),
                 WINHTTP_CALLBACK_STATUS_WRITE_COMPLETE);
            sent += piece;
        }
        return isGood_;
    }

    bool receiveHead(HttpAnswer& answer) {
        return step(::WinHttpReceiveResponse(request_, nullptr),
                    WINHTTP_CALLBACK_STATUS_HEADERS_AVAILABLE) &&
               readHead(answer);
    }

    // The next piece of the body; empty at its end and when the step fails.
    std::string_view receivePiece() {
        received_ = 0;
        step(::WinHttpReadData(request_, events_->incoming.data(),
                               static_cast<DWORD>(events_->incoming.size()), nullptr),
             WINHTTP_CALLBACK_STATUS_READ_COMPLETE);
        return {events_->incoming.data(), received_};
    }

    bool isGood() const { return isGood_; }
    DWORD error() const { return error_; }

  private:
    bool prepare(const HttpQuestion& question, bool isSecure) {
        // The answer is passed on, whatever it asks for.
        DWORD off = WINHTTP_DISABLE_REDIRECTS | WINHTTP_DISABLE_COOKIES |
                    WINHTTP_DISABLE_AUTHENTICATION | WINHTTP_DISABLE_KEEP_ALIVE;
        const int silence = static_cast<int>(timeout_.count());
        const int connecting = static_cast<int>(
            std::min<std::chrono::milliseconds>(timeout_, longestConnecting).count());
        DWORD answering = static_cast<DWORD>(silence);
        std::string fields;
        for (const auto& [name, value] : question.fields) {
            fields += name + ": " + value + "\r\n";
        }
        const std::wstring wide = toWide(fields);
        return ::WinHttpSetOption(request_, WINHTTP_OPTION_DISABLE_FEATURE, &off, sizeof off) &&
               ::WinHttpSetTimeouts(request_, connecting, connecting, silence, silence) &&
               ::WinHttpSetOption(request_, WINHTTP_OPTION_RECEIVE_RESPONSE_TIMEOUT, &answering,
                                  sizeof answering) &&
               // A server may ask for a certificate of the user, and has to do without.
               (!isSecure || ::WinHttpSetOption(request_, WINHTTP_OPTION_CLIENT_CERT_CONTEXT,
                                                WINHTTP_NO_CLIENT_CERT_CONTEXT, 0)) &&
               (wide.empty() ||
                ::WinHttpAddRequestHeaders(request_, wide.c_str(), static_cast<DWORD>(wide.size()),
                                           WINHTTP_ADDREQ_FLAG_ADD));
    }

    bool step(BOOL begun, DWORD wanted) {
        if (!isGood_ || !begun) return fail(::GetLastError());
        const auto event = events_->next(timeout_ + longestConnecting);
        if (!event) return fail(ERROR_WINHTTP_OPERATION_CANCELLED);
        if (event->kind != wanted) return fail(event->number);
        received_ = event->number;
        return true;
    }

    bool fail(DWORD error) {
        if (isGood_) error_ = error;
        return isGood_ = false;
    }

    bool readHead(HttpAnswer& answer) {
        DWORD status = 0;
        DWORD size = sizeof status;
        if (!::WinHttpQueryHeaders(request_, WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER,
                                   WINHTTP_HEADER_NAME_BY_INDEX, &status, &size,
                                   WINHTTP_NO_HEADER_INDEX)) {
            return fail(::GetLastError());
        }
        answer.status = static_cast<int>(status);
        return readFields(answer.fields);
    }

    // The lines of the head, each ended by a NUL; the first one is no field.
    bool readFields(HttpFields& fields) {
        DWORD size = 0;
        ::WinHttpQueryHeaders(request_, WINHTTP_QUERY_RAW_HEADERS, WINHTTP_HEADER_NAME_BY_INDEX,
                              nullptr, &size, WINHTTP_NO_HEADER_INDEX);
        std::wstring head(size / sizeof(wchar_t), L'\0');
        if (!::WinHttpQueryHeaders(request_, WINHTTP_QUERY_RAW_HEADERS,
                                   WINHTTP_HEADER_NAME_BY_INDEX, head.data(), &size,
                                   WINHTTP_NO_HEADER_INDEX)) {
            return fail(::GetLastError());
        }
        const std::string text = toUtf8(head);
        std::string_view rest = text;
        while (!rest.empty()) {
            const std::string_view line = rest.substr(0, rest.find('\0'));
            rest.remove_prefix(std::min(line.size() + 1, rest.size()));
            const std::size_t colon = line.find(':');
            if (colon == std::string_view::npos) continue;
            const std::size_t value = line.find_first_not_of(" \t", colon + 1);
            fields.emplace_back(line.substr(0, colon),
                                value == std::string_view::npos ? "" : line.substr(value));
        }
        return true;
    }

    std::shared_ptr<WinHttpEvents> events_;
    std::chrono::milliseconds timeout_;
    HINTERNET request_;
    DWORD_PTR context_ = 0;
    bool isGood_ = false;
    DWORD error_ = 0;
    DWORD received_ = 0;
};

// Whether the body is as long as the head says: the system takes an early end for the end.
bool isComplete(const HttpAnswer& answer, std::uint64_t received) {
    const std::string_view text = answer.field("Content-Length");
    std::uint64_t length = 0;
    const bool isSaid =
        std::from_chars(text.data(), text.data() + text.size(), length).ec == std::errc();
    return !isSaid || answer.status == 204 || answer.status == 304 || received == length;
}

// By WinHTTP, with the certificates that Windows trusts.
class WinHttpExchange final : public HttpExchange {
  public:
    WinHttpExchange(const std::string& server, std::chrono::seconds timeout)
        : address_(parse(server)), timeout_(timeout) {}

    ExchangeEnd run(const HttpQuestion& question, HttpAnswer& answer,
                    const Receiver& receive) override {
        if (!address_) return ExchangeEnd::Unreachable;
        const Internet session(::WinHttpOpen(nullptr, WINHTTP_ACCESS_TYPE_NO_PROXY,
                                             WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS,
                                             WINHTTP_FLAG_ASYNC));
        const Internet connection(
            ::WinHttpConnect(session.get(), address_->host.c_str(), address_->port, 0));
        WinHttpRequest request(connection.get(), question, address_->isSecure, events_, timeout_);
        if (!request.send(question.body) || !request.receiveHead(answer)) {
            return endOf(request.error());
        }
        std::uint64_t received = 0;
        for (std::string_view piece; !(piece = request.receivePiece()).empty();) {
            received += piece.size();
            if (!receive(piece)) return ExchangeEnd::BrokenOff;
        }
        return request.isGood() && isComplete(answer, received) ? ExchangeEnd::Answered
                                                                : ExchangeEnd::BrokenOff;
    }

    void breakOff() override { events_->breakOff(); }

  private:
    std::optional<Address> address_;
    std::chrono::milliseconds timeout_;
    std::shared_ptr<WinHttpEvents> events_ = std::make_shared<WinHttpEvents>();
};

}  // namespace

std::unique_ptr<HttpExchange> makeHttpExchange(const std::string& server,
                                               std::chrono::seconds timeout) {
    return std::make_unique<WinHttpExchange>(server, timeout);
}

}  // namespace tandril::platform
