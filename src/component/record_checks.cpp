#include "component/record_checks.h"

#include "forms/record_check.h"

namespace tandril {
namespace {

// While there is no master data every value is known.
class NoMasterData : public forms::MasterDataLookUp {
  public:
    bool hasValue(std::string_view, std::string_view) override { return true; }
    bool hasObject(std::string_view, std::string_view) override { return true; }
    bool hasObjectNumber(std::string_view, std::string_view) override { return true; }
};

class CheckWithMasterData : public store::RecordCheck {
  public:
    explicit CheckWithMasterData(Call& call) : check_(call.mapper(), masterData_) {}

    std::vector<store::CheckFinding> check(const store::CheckedRecord& checked) override {
        return check_.check(checked);
    }

  private:
    NoMasterData masterData_;
    forms::RecordCheck check_;
};

}  // namespace

std::unique_ptr<store::RecordCheck> recordCheckFor(Call& call) {
    return std::make_unique<CheckWithMasterData>(call);
}

}  // namespace tandril
