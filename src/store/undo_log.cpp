#include "store/undo_log.h"

namespace tandril::store {
namespace {

// The text that stands first in an element may be kept in the element itself.
void putLeadingText(xml::Node element, const char* text) {
    if (*element.value() != '\0') {
        element.text().set("");
    }
    if (*text != '\0') {
        element.text().set(text);
    }
}

}  // namespace

void UndoLog::keepContent(xml::Node element) {
    steps_.push_back({Kind::Content, element, xml::appendCopy(copies_.root(), element)});
}

void UndoLog::keepAttribute(xml::Node element, const char* name) {
    const bool isNew = !element.attribute(name);
    steps_.push_back({isNew ? Kind::NewAttribute : Kind::Attribute,
                      element,
                      {},
                      name,
                      std::string(xml::attribute(element, name))});
}

void UndoLog::keepAddition(xml::Node element) {
    steps_.push_back({Kind::Addition, element, {}});
}

void UndoLog::takeBack() {
    while (!steps_.empty()) {
        takeBack(steps_.back());
        steps_.pop_back();
    }
}

void UndoLog::takeBack(const Step& step) {
    xml::Node element = step.element;
    switch (step.kind) {
        case Kind::Content:
            element.remove_children();
            putLeadingText(element, step.content.value());
            for (const xml::Node child : step.content.children()) {
                element.append_copy(child);
            }
            break;
        case Kind::Attribute:
            element.attribute(step.name).set_value(step.value.c_str());
            break;
        case Kind::NewAttribute:
            element.remove_attribute(step.name);
            break;
        case Kind::Addition:
            element.parent().remove_child(element);
            break;
    }
}

}  // namespace tandril::store
