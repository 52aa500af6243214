#pragma once

#include <string>
#include <string_view>

#include "forms/row.h"
#include "support/documents.h"

namespace tandril::test {

// A form with one field, as a field mapper describes it.
class OneField {
  public:
    // `attributes` are the field's, as they are written; `children` the entries of its value list.
    OneField(store::Section section, std::string_view name, std::string_view attributes,
             std::string_view children = "")
        : name_(name),
          mapper_(mapperOf(
              element(store::sectionName(section), "", element(name, attributes, children)))),
          form_{mapper_, section, "order_A1"} {}
    OneField(const OneField&) = delete;
    OneField& operator=(const OneField&) = delete;

    forms::FormField withValue(std::string_view value) const {
        return forms::formField(form_, name_, value);
    }

  private:
    static std::string element(std::string_view name, std::string_view attributes,
                               std::string_view children) {
        const std::string tag(name);
        return "<" + tag + " " + std::string(attributes) + ">" + std::string(children) + "</" +
               tag + ">";
    }

    std::string name_;
    mapper::FieldMapper mapper_;
    forms::FormContext form_;
};

inline std::string flag(std::string_view name, bool value) {
    return " " + std::string(name) + (value ? "='True'" : "='False'");
}

}  // namespace tandril::test
