#include "store/candidates.h"

namespace tandril::store {
namespace {

void passOver(Section /*section*/, xml::Node /*element*/) {}

}  // namespace

std::vector<xml::Node> candidatesBelow(xml::Node root, Section section) {
    std::vector<xml::Node> found;
    visitBelow(root, passOver, [&](Section place, xml::Node candidate) {
        if (place == section) {
            found.push_back(candidate);
        }
    });
    return found;
}

std::vector<Candidate> candidatesBelow(xml::Node root) {
    std::vector<Candidate> found;
    visitBelow(root, passOver, [&](Section section, xml::Node candidate) {
        found.push_back({section, candidate});
    });
    return found;
}

}  // namespace tandril::store
