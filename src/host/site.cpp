#include "host/site.h"

#include <charconv>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

#include "component/methods.h"
#include "host/json_response.h"
#include "host/routes.h"
#include "platform/fault.h"
#include "surface/json_call.h"
#include "surface/json_text.h"

namespace tandril::host {
namespace {

using nlohmann::ordered_json;

int statusOf(surface::Outcome outcome) {
    switch (outcome) {
        case surface::Outcome::Result:
            return 200;
        case surface::Outcome::Fault:
            return 500;
        case surface::Outcome::UnknownMethod:
            return 404;
        case surface::Outcome::BadArguments:
            return 400;
    }
    return 500;
}

ordered_json describe(const Method& method) {
    ordered_json parameters = ordered_json::array();
    for (const Parameter& parameter : method.parameters) {
        parameters.push_back({{"name", parameter.name},
                              {"kind", kindName(parameter.kind)},
                              {"byReference", parameter.byReference}});
    }
    return {{"slot", method.slot},
            {"name", method.name},
            {"parameters", std::move(parameters)},
            {"result", kindName(method.result)}};
}

Response methodTable() {
    ordered_json table = ordered_json::array();
    for (const Method& method : methods()) {
        table.push_back(describe(method));
    }
    return jsonResponse(200, table);
}

Response startSession(const Tokens& tokens, int port) {
    Response response{303, "", "", {}};
    response.headers.add("Location", "/");
    response.headers.add("Set-Cookie", sessionCookie(port) + "=" + tokens.session() +
                                           "; Path=/; HttpOnly; SameSite=Strict");
    return response;
}

}  // namespace

Site::Site(Settings settings, Client20& client, platform::FileSystem& files,
           const Messages& messages, Tokens& tokens)
    : settings_(std::move(settings)),
      client_(client),
      journal_(files),
      messages_(messages),
      tokens_(tokens),
      files_(settings_.page),
      relay_(settings_.enterprise) {}

std::optional<Response> Site::refuse(const Request& head) const {
    return refusal(head, {tokens_, settings_.port, settings_.bodyLimit});
}

Response Site::answer(const Request& request) {
    std::string path;
    percentDecode(request.rawPath(), path);  // the rules let only paths through that decode
    const Route& route = routeOf(path);
    switch (route.endpoint) {
        case Endpoint::Methods:
            return methodTable();
        case Endpoint::Call:
            return call(std::string_view(path).substr(route.path.size()), request.body);
        case Endpoint::Session:
            return jsonResponse(200, {{"csrf", tokens_.csrf()}});
        case Endpoint::Journal:
            return journal(request);
        case Endpoint::Messages:
            return messages(request);
        case Endpoint::Enterprise:
            return relay_.answer(request);
        case Endpoint::Page:
            return page(request, path);
    }
    return textResponse(404, "there is no such page");
}

Response Site::call(std::string_view method, const std::string& body) {
    nlohmann::json arguments;
    try {
        arguments = surface::parseJson(body);
    } catch (const surface::InvalidJson& invalid) {
        return jsonResponse(400, surface::invalidBody(invalid.what()));
    }
    surface::Answer answer;
    if (!turns_.run([&] { answer = surface::call(client_, method, arguments); })) {
        return textResponse(503, "the host is stopping");
    }
    return jsonResponse(statusOf(answer.outcome), answer.body);
}

// In turn with the calls: both work on the files of the home.
Response Site::journal(const Request& request) {
    Response response;
    const bool ran = turns_.run([&] {
        try {
            response = request.method == "POST" ? journal_.write(request.body) : journal_.read();
        } catch (const Fault& fault) {
            response = jsonResponse(500, {{"fault", fault.what()}});
        }
    });
    return ran ? response : textResponse(503, "the host is stopping");
}

Response Site::messages(const Request& request) const {
    std::string_view after;
    std::int64_t number = 0;
    if (queryParameter(request.rawQuery(), "after", after)) {
        std::from_chars(after.data(), after.data() + after.size(), number);
    }
    ordered_json list = ordered_json::array();
    for (const Messages::Message& message : messages_.after(number)) {
        list.push_back(
            {{"number", message.number}, {"title", message.title}, {"text", message.text}});
    }
    return jsonResponse(200, list);
}

Response Site::page(const Request& request, std::string_view path) const {
    std::string_view launch;
    if (path == "/" && queryParameter(request.rawQuery(), "launch", launch)) {
        return startSession(tokens_, settings_.port);
    }
    return files_.answer(path);
}

void Site::stop() {
    turns_.stop();
    relay_.stop();
}

}  // namespace tandril::host
