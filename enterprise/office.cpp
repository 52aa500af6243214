#include "enterprise/office.h"

#include <set>

#include "enterprise/closing.h"
#include "enterprise/download.h"
#include "enterprise/intake.h"
#include "enterprise/nodes.h"
#include "xml/document.h"

namespace tandril::enterprise {
namespace {

using Node = pugi::xml_node;

// Now and then: with every third upload the office closes an order.
constexpr int uploadsPerClosing = 3;

// Removes the records, in or outside of groups, whose State is not among the given ones.
void keepStates(Node harbrook, const std::set<std::string>& states) {
    const auto strip = [&states](Node parent) {
        for (const Node record : elements(parent)) {
            if (std::string_view(record.name()) == "ServiceOrder") continue;
            if (!states.contains(attribute(record, "State"))) parent.remove_child(record);
        }
    };
    for (const Node section : elements(harbrook)) {
        strip(section);
        for (const Node group : elements(section)) {
            if (std::string_view(group.name()) == "ServiceOrder") strip(group);
        }
    }
}

xml::Document parseUpload(const std::string& upload) {
    auto document = xml::Document::decode(upload);
    if (!document) throw BadUpload("The upload is not a well-formed XML document.");
    if (std::string_view(document->root().name()) != "harbrook") {
        throw BadUpload("The upload is not a document of service orders.");
    }
    return std::move(*document);
}

}  // namespace

Office::Office(SampleFolder samples, const std::optional<std::filesystem::path>& folder,
               Clock clock, Language language)
    : samples_(std::move(samples)), file_(folder), clock_(std::move(clock)) {
    if (auto remembered = file_.load()) {
        memory_ = std::move(*remembered);
    } else {
        remember(firstMemory(language));
    }
}

// What the sample orders hold as created on the engineer's computer is not known here yet; what
// stands there as sent is taken now, and the answer waits for the first report.
Memory Office::firstMemory(Language language) const {
    const auto known = xml::Document::decode(samples_.orders());
    keepStates(known->root(), {"O", "M", "MU"});
    Memory memory;
    Node book = memory.book();
    for (const Node section : elements(known->root())) book.append_copy(section);

    const auto sent = xml::Document::decode(samples_.orders());
    keepStates(sent->root(), {"NU", "MU"});
    Intake intake(memory, samples_.masterTables(), language, appendFile(memory, memory.waiting()));
    intake.take(sent->root());
    return memory;
}

Node Office::appendFile(Memory& memory, Node parent) const {
    std::string number = std::to_string(memory.countUpload());
    number.insert(0, number.size() < 4 ? 4 - number.size() : 0, '0');
    Node file = parent.append_child("File");
    setAttribute(file, "ID", clock_().substr(0, 8) + "-" + number);
    return file;
}

void Office::remember(Memory memory) {
    file_.save(memory);
    memory_ = std::move(memory);
}

std::string Office::orders() {
    if (!memory_.hasAnswered()) return samples_.orders();
    Memory next = memory_.copy();
    if (markClosingsHeard(next)) remember(std::move(next));
    return buildDownload(memory_);
}

std::string Office::takeUpload(const std::string& upload, Language language) {
    const xml::Document document = parseUpload(upload);
    if (auto answer = memory_.answerTo(upload)) return *answer;

    Memory next = memory_.copy();
    pugi::xml_document answer;
    Node report = answer.append_child("UploadReport");
    for (const Node waiting : elements(next.waiting())) {
        report.append_copy(waiting);
        next.waiting().remove_child(waiting);
    }
    Intake intake(next, samples_.masterTables(), language, appendFile(next, report));
    intake.take(document.root());
    if (next.uploads() % uploadsPerClosing == 0) closeAnOrder(next, clock_());
    next.rememberAnswer(upload, report);
    remember(std::move(next));
    return xmlText(report);
}

}  // namespace tandril::enterprise
