#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "xml/node.h"

namespace tandril::store {

// Remembers how elements were before they are changed, to make them so again. Elements that a log
// holds must not be removed while it is in use.
class UndoLog {
  public:
    // Each is called before the change, with the element that is about to change.
    void keepContent(xml::Node element);
    void keepAttribute(xml::Node element, const char* name);
    // Called behind the change, with the element that was added.
    void keepAddition(xml::Node element);

    // Takes all changes back, the last one first, and forgets them.
    void takeBack();

  private:
    enum class Kind : std::uint8_t { Content, Attribute, NewAttribute, Addition };
    struct Step {
        Kind kind;
        xml::Node element;
        xml::Node content;           // Content: a copy of what the element held
        const char* name = nullptr;  // of the attribute
        std::string value = {};
    };

    void takeBack(const Step& step);

    std::vector<Step> steps_;
    pugi::xml_document copies_;
};

}  // namespace tandril::store
