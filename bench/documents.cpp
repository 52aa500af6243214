#include "bench/documents.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "store/sections.h"
#include "store/state.h"
#include "xml/document.h"
#include "xml/node.h"

namespace tandril::bench {
namespace {

using store::Section;

constexpr std::array sections{Section::Orders, Section::Activities, Section::Material,
                              Section::Labour, Section::Other};
constexpr std::size_t firstNumber = 1'000'000;

const char* orderKeyOf(Section section) {
    return section == Section::Orders ? store::orderKey : store::groupOrderKey;
}

// The sample's orders or groups of that order, as text.
std::string textsOf(xml::Node root, Section section, std::string_view order) {
    std::string text;
    for (const xml::Node element : xml::elements(xml::child(root, store::sectionName(section)))) {
        if (xml::attribute(element, orderKeyOf(section)) == order) {
            text += xml::toText(element);
        }
    }
    return text;
}

std::vector<std::string> cut(std::string_view text, const std::string& at) {
    std::vector<std::string> pieces;
    for (std::size_t found = 0; (found = text.find(at)) != std::string_view::npos;) {
        pieces.emplace_back(text.substr(0, found));
        text.remove_prefix(found + at.size());
    }
    pieces.emplace_back(text);
    return pieces;
}

void markDownloaded(xml::Node element) {
    if (!xml::attribute(element, store::stateAttribute).empty()) {
        xml::setAttribute(element, store::stateAttribute, store::state::downloaded);
    }
    for (const xml::Node child : xml::elements(element)) {
        markDownloaded(child);
    }
}

void openOrders(xml::Node root) {
    for (const xml::Node order :
         xml::elements(xml::child(root, store::sectionName(Section::Orders)))) {
        xml::setText(xml::elementAt(order, 0), store::status::open);
    }
}

std::string confirmation(std::string_view order, std::string_view activity, std::string_view line,
                         std::string_view costType) {
    const auto attribute = [](std::string_view name, std::string_view value) {
        return " " + std::string(name) + "=\"" + std::string(value) + "\"";
    };
    return "<Entry" + attribute("Status", "Completed") + attribute("Order", order) +
           attribute("Activity", activity) + attribute("CostLine", line) +
           attribute("CostType", costType) + attribute("Description", "taken") + "/>";
}

std::string confirmationsOf(xml::Node root, std::string_view order) {
    std::string text = confirmation(order, "", "", "");
    for (const Section section : sections) {
        const store::CostType* type = store::costTypeOf(section);
        for (const xml::Node group : xml::elements(xml::child(root, store::sectionName(section)))) {
            if (section == Section::Orders ||
                xml::attribute(group, store::groupOrderKey) != order) {
                continue;
            }
            for (const xml::Node member : xml::elements(group)) {
                text +=
                    type == nullptr
                        ? confirmation(order, xml::attribute(member, store::activityKey), "", "")
                        : confirmation(order, xml::attribute(group, store::activityKey),
                                       xml::attribute(member, store::lineKey), type->word);
            }
        }
    }
    return text;
}

}  // namespace

Documents::Documents(std::string_view sample) {
    const auto stored = xml::Document::parse(sample);
    const auto downloaded = xml::Document::parse(sample);
    if (!stored || !downloaded) {
        throw std::runtime_error("the sample orders are no document");
    }
    markDownloaded(downloaded->root());
    openOrders(downloaded->root());
    for (const xml::Node record :
         xml::elements(xml::child(stored->root(), store::sectionName(Section::Orders)))) {
        const std::string number(xml::attribute(record, store::orderKey));
        const std::string quoted = "\"" + number + "\"";
        Order order;
        order.isProvisional = store::isProvisional(number);
        for (const Section section : sections) {
            order.stored.push_back(cut(textsOf(stored->root(), section, number), quoted));
            order.downloaded.push_back(cut(textsOf(downloaded->root(), section, number), quoted));
        }
        order.confirmations = cut(confirmationsOf(stored->root(), number), quoted);
        orders_.push_back(std::move(order));
    }
}

std::string Documents::number(std::size_t place) const {
    return (orders_[place % orders_.size()].isProvisional ? "_" : "") +
           std::to_string(firstNumber + place);
}

void Documents::append(std::string& out, const Template& pieces, std::size_t place) const {
    const std::string quoted = "\"" + number(place) + "\"";
    for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
        if (piece != 0) {
            out += quoted;
        }
        out += pieces[piece];
    }
}

std::string Documents::document(Range orders, std::vector<Template> Order::*kind) const {
    std::string text = "<" + std::string(store::rootName) + ">";
    for (std::size_t section = 0; section < sections.size(); ++section) {
        const std::string name = store::sectionName(sections[section]);
        text += "<" + name + ">";
        for (std::size_t place = orders.first; place < orders.first + orders.count; ++place) {
            append(text, (orders_[place % orders_.size()].*kind)[section], place);
        }
        text += "</" + name + ">";
    }
    text += "</" + std::string(store::rootName) + ">";
    return text;
}

std::string Documents::store(Range orders) const {
    return document(orders, &Order::stored);
}

std::string Documents::download(Range orders) const {
    return document(orders, &Order::downloaded);
}

std::string Documents::edits(Range orders) const {
    const std::string name = store::sectionName(Section::Orders);
    std::string text = "<" + std::string(store::rootName) + "><" + name + ">";
    for (std::size_t place = orders.first; place < orders.first + orders.count; ++place) {
        text += "<record ServiceOrder=\"" + number(place) +
                "\"><Description>Looked at again</Description></record>";
    }
    return text + "</" + name + "></" + std::string(store::rootName) + ">";
}

std::string Documents::report(Range orders) const {
    std::string text = "<UploadReport><File ID=\"U1\">";
    for (std::size_t place = orders.first; place < orders.first + orders.count; ++place) {
        append(text, orders_[place % orders_.size()].confirmations, place);
    }
    return text + "</File></UploadReport>";
}

std::size_t Documents::ordersFor(std::size_t bytes) const {
    return bytes * orders_.size() / store({0, orders_.size()}).size() + 1;
}

}  // namespace tandril::bench
