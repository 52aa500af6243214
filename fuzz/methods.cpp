// The methods that take an XML text. What is not well-formed is answered in the method's own words
// and changes no file but the log, nor the store that the next call may show; whatever is taken
// leaves files that load, lists and forms that can be shown, and an upload that can be sent.
#include <algorithm>
#include <optional>

#include "component/methods.h"
#include "home.h"
#include "platform/fault.h"
#include "target.h"
#include "xml/document.h"

namespace tandril::fuzz {
namespace {

constexpr std::string_view anyResult = "*";

struct XmlMethod {
    std::string_view name;
    std::string_view malformed;            // the answer to what is not well-formed
    std::vector<std::string_view> taking;  // the answers after which files may have changed
    std::string_view file = {};            // without which the method does something else
    std::vector<Value> more = {};          // arguments behind the text
};

// The field mapper of the home has no texts, so that failures are told by their codes.
const std::vector<XmlMethod>& xmlMethods() {
    static const std::vector<XmlMethod> table = {
        {"DownloadXml",
         "SLBEU0265",
         {"New Data has been downloaded.", "SLBEU0266", "SLBEU0322"},
         paths::store},
        {"updatexml", "SLBEU0267", {""}},
        {"AddXml", "SLBEU0269", {""}},
        {"SaveHra", "SLBEU0265", {""}},
        {"DownloadErrors", "SLBEU0288", {""}, paths::report},
        {"MyActivities", anyResult, {}},
        {"deleteCompletedOrders", anyResult, {""}},
        {"SaveWebPage", anyResult, {""}},
        {"Synchronize_MasterData", "INVALID XML String!!", {}},
        // It stores its text unchecked.
        {"getFMapper", anyResult, {""}, paths::fieldMapper, {std::string("Yes")}},
    };
    return table;
}

std::string call(Client20& client, const XmlMethod& method, std::string_view text) {
    std::vector<Value> arguments{std::string(text)};
    arguments.insert(arguments.end(), method.more.begin(), method.more.end());
    const Value result = findMethod(method.name)->invoke(client, arguments);
    const auto* const answer = std::get_if<std::string>(&result);
    return answer == nullptr ? std::string() : *answer;
}

// What the apostrophes of a statement enclose are values; nothing else in it may be more than a
// single statement is made of.
void requireOneStatement(const std::string& sql) {
    bool isValue = false;
    for (const char c : sql) {
        isValue = isValue != (c == '\'');
        require(isValue || (c != ';' && c != '"' && c != '[' && c != '/'), sql);
    }
    require(!isValue, sql);
}

void feed(const XmlMethod& method, std::string_view input, Home& home) {
    const auto before = home.files();
    const std::string answer = call(home.client, method, input);
    const bool isMalformed = !xml::Document::parse(input).has_value();
    require(!isMalformed || method.malformed == anyResult || answer == method.malformed, answer);
    const auto& taking = method.taking;
    if (std::find(taking.begin(), taking.end(), answer) == taking.end()) {
        require(home.files() == before, "a refusal changes no file");
        home.requireStoreAsSaved();
    }
    for (const std::string& sql : home.machine.database.statements) {
        requireOneStatement(sql);
    }
}

void run(const XmlMethod& method, std::string_view input) {
    Home home;
    feed(method, input, home);
    home.requireWholeFiles();
    home.showSome(input);
    home.sendAndPurge();
    home.requireWholeFiles();
    if (!method.file.empty()) {
        Home bare;
        bare.machine.files.remove(method.file);
        feed(method, input, bare);
        bare.requireWholeFiles();
    }
}

}  // namespace

std::vector<Target> methodTargets() {
    std::vector<Target> targets;
    for (const XmlMethod& method : xmlMethods()) {
        targets.push_back(
            {std::string(method.name), [&method](std::string_view input) { run(method, input); }});
    }
    return targets;
}

}  // namespace tandril::fuzz
