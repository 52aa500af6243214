#pragma once

#include <string>

#include "enterprise/language.h"
#include "enterprise/sample_folder.h"

namespace tandril::enterprise {

// The office behind the server: what it hands out to the engineer.
class Office {
  public:
    explicit Office(SampleFolder samples) : samples_(std::move(samples)) {}

    const std::string& fieldMapper(Language language) const {
        return samples_.fieldMapper(language);
    }
    const std::string& masterDataChanges() const { return samples_.masterDataChanges(); }
    std::string orders() const { return samples_.orders(); }

  private:
    SampleFolder samples_;
};

}  // namespace tandril::enterprise
