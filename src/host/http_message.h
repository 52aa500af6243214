#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Requests and responses as the host's own code sees them, free of any HTTP library.
namespace tandril::host {

// Header fields in the order in which they came. Names match in any case.
class Headers {
  public:
    void add(std::string name, std::string value);

    // The values of all fields of that name.
    std::vector<std::string_view> all(std::string_view name) const;
    // The value of the only field of that name; empty when there is none or more than one.
    std::string_view only(std::string_view name) const;
    bool has(std::string_view name) const { return !all(name).empty(); }

    auto begin() const { return fields_.begin(); }
    auto end() const { return fields_.end(); }

  private:
    std::vector<std::pair<std::string, std::string>> fields_;
};

struct Request {
    std::string method;
    std::string target;  // as it was sent: "/enterprise/orders?of=A%201"
    Headers headers;
    std::string body;

    // The two parts of the target, still encoded: before the first "?" and after it.
    std::string_view rawPath() const;
    std::string_view rawQuery() const;
};

struct Response {
    int status = 200;
    std::string contentType;  // empty when there is no body
    std::string body;
    Headers headers;  // further ones
};

// One line of plain text: every refusal, and what else is for people.
Response textResponse(int status, std::string_view line);

// Decodes percent-encoding. Returns false when a "%" is not followed by two hexadecimal digits.
bool percentDecode(std::string_view text, std::string& decoded);

// The value of the first parameter of that name in an encoded query ("a=1&b=2"), still encoded.
// Returns false when there is none.
bool queryParameter(std::string_view query, std::string_view name, std::string_view& value);

}  // namespace tandril::host
