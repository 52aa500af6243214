#pragma once

#include <vector>

#include "store/sections.h"
#include "xml/node.h"

namespace tandril::store {

// An order, or a group of another section.
struct Candidate {
    Section section;
    xml::Node element;
};

// Whether an element of the section is one.
inline bool isCandidate(Section section, xml::Node element) {
    return xml::isNamed(element, section == Section::Orders ? orderElement : groupElement);
}

// All of them below a root, or those of a section, in document order. Sections inside of records
// are not looked for.
std::vector<Candidate> candidatesBelow(xml::Node root);
std::vector<xml::Node> candidatesBelow(xml::Node root, Section section);

// Shows every element of a section's name, and every order and group of a section, in document
// order.
template <class VisitSection, class VisitCandidate>
void visitBelow(xml::Node parent, const VisitSection& visitSection,
                const VisitCandidate& visitCandidate) {
    const auto section = sectionNamed(parent.name());
    if (section) {
        visitSection(*section, parent);
    }
    for (const xml::Node child : xml::elements(parent)) {
        if (section && isCandidate(*section, child)) {
            visitCandidate(*section, child);
        } else {
            visitBelow(child, visitSection, visitCandidate);
        }
    }
}

}  // namespace tandril::store
