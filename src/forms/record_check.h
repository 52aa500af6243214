#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/master_data_look_up.h"
#include "mapper/field_mapper.h"
#include "store/record_check.h"

namespace tandril::forms {

// Judges records field by field: what must be filled, which stamps must be dates, and which values
// must stand in the master data. A failure reads as the field's label and the text of what is
// wrong.
class RecordCheck : public store::RecordCheck {
  public:
    // Without a field mapper, null, the failures show names and codes instead of labels and texts.
    RecordCheck(const mapper::FieldMapper* mapper, MasterDataLookUp& masterData)
        : mapper_(mapper), masterData_(masterData) {}

    std::vector<store::CheckFinding> check(const store::CheckedRecord& checked) override;

  private:
    std::string failureText(store::Section section, std::string_view field,
                            std::string_view code) const;

    const mapper::FieldMapper* mapper_;
    MasterDataLookUp& masterData_;
};

}  // namespace tandril::forms
