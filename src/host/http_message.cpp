#include "host/http_message.h"

#include <charconv>

#include "platform/ascii.h"

namespace tandril::host {

void Headers::add(std::string name, std::string value) {
    fields_.emplace_back(std::move(name), std::move(value));
}

std::vector<std::string_view> Headers::all(std::string_view name) const {
    const std::string wanted = platform::foldAscii(name);
    std::vector<std::string_view> values;
    for (const auto& [fieldName, value] : fields_) {
        if (platform::foldAscii(fieldName) == wanted) {
            values.push_back(value);
        }
    }
    return values;
}

std::string_view Headers::only(std::string_view name) const {
    const std::vector<std::string_view> values = all(name);
    return values.size() == 1 ? values.front() : std::string_view();
}

std::string_view Request::rawPath() const {
    return std::string_view(target).substr(0, target.find('?'));
}

std::string_view Request::rawQuery() const {
    const std::size_t mark = target.find('?');
    return mark == std::string::npos ? std::string_view()
                                     : std::string_view(target).substr(mark + 1);
}

Response textResponse(int status, std::string_view line) {
    return {status, "text/plain; charset=utf-8", std::string(line) + '\n', {}};
}

bool percentDecode(std::string_view text, std::string& decoded) {
    decoded.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            decoded += text[i];
            continue;
        }
        const std::string_view digits = text.substr(i + 1, 2);
        unsigned char byte = 0;
        const char* end = digits.data() + digits.size();
        if (digits.size() != 2 || std::from_chars(digits.data(), end, byte, 16).ptr != end) {
            return false;
        }
        decoded += static_cast<char>(byte);
        i += 2;
    }
    return true;
}

bool queryParameter(std::string_view query, std::string_view name, std::string_view& value) {
    while (!query.empty()) {
        const std::string_view pair = query.substr(0, query.find('&'));
        const std::size_t equals = pair.find('=');
        if (pair.substr(0, equals) == name) {
            value = equals == std::string_view::npos ? std::string_view() : pair.substr(equals + 1);
            return true;
        }
        query.remove_prefix(std::min(pair.size() + 1, query.size()));
    }
    return false;
}

}  // namespace tandril::host
