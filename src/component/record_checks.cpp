#include "component/record_checks.h"

#include "component/masterdata_calls.h"
#include "forms/record_check.h"

namespace tandril {
namespace {

class CheckWithMasterData : public store::RecordCheck {
  public:
    explicit CheckWithMasterData(Call& call)
        : masterData_(masterdata_calls::lookUp(call)), check_(call.mapper(), *masterData_) {}

    std::vector<store::CheckFinding> check(const store::CheckedRecord& checked) override {
        return check_.check(checked);
    }

  private:
    std::unique_ptr<forms::MasterDataLookUp> masterData_;
    forms::RecordCheck check_;
};

}  // namespace

std::unique_ptr<store::RecordCheck> recordCheckFor(Call& call) {
    return std::make_unique<CheckWithMasterData>(call);
}

}  // namespace tandril
