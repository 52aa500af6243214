#include "surface/json_request.h"

#include <nlohmann/json.hpp>

#include "surface/json_call.h"
#include "surface/json_text.h"

namespace tandril::surface {
namespace {

using nlohmann::json;

AnswerBody answer(Client20& client, const json& request) {
    const auto method = request.find("method");
    if (method == request.end() || !method->is_string()) {
        return invalidBody("the request has no \"method\" that is a string");
    }
    const auto arguments = request.find("args");
    if (arguments == request.end()) {
        return invalidBody("the request has no \"args\"");
    }
    return call(client, method->get_ref<const std::string&>(), *arguments).body;
}

AnswerBody answerText(Client20& client, std::string_view line) {
    try {
        const json request = parseJson(line);
        if (!request.is_object()) {
            return invalidBody("the request is not a JSON object");
        }
        AnswerBody body = answer(client, request);
        if (const auto id = request.find("id"); id != request.end()) {
            body["id"] = *id;
        }
        return body;
    } catch (const InvalidJson& error) {
        return invalidBody(error.what());
    }
}

}  // namespace

std::string answerLine(Client20& client, std::string_view line) {
    return toLine(answerText(client, line)) + '\n';
}

}  // namespace tandril::surface
