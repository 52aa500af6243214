#include "component/form_calls.h"

#include <optional>

#include "forms/column_headings.h"
#include "forms/creation_form.h"
#include "forms/detail_form.h"
#include "forms/drop_downs.h"

namespace tandril::form_calls {
namespace {

constexpr std::string_view noRecord = "SLBEU0323";
// What the form of a material line says without a field mapper; the page's text, not a message's.
constexpr std::string_view noStyleSheet = "Unable to load Harbrook Style Sheet";

std::string showRecord(Call& call, const forms::FormKind& kind, const forms::RecordKey& key,
                       bool correctsError) {
    std::optional<std::string> form = forms::detailForm(
        *call.mapper(), *call.storeToRead(), kind, forms::keyAt(kind.level, key), correctsError);
    if (!form) {
        call.fail(noRecord);
    }
    return form.value_or("");
}

LocalNumber counterOf(forms::Level level) {
    switch (level) {
        case forms::Level::Order:
            return LocalNumber::Order;
        case forms::Level::Activity:
            return LocalNumber::Activity;
        case forms::Level::Line:
            break;
    }
    return LocalNumber::CostLine;
}

// The next provisional number at that level.
std::string drawNumber(Call& call, forms::Level level) {
    return "_" + std::to_string(call.settings().nextLocalId(counterOf(level)));
}

// What a cost line's form shows of its activity; nothing when there is no store.
std::string descriptionFor(Call& call, forms::Level level, const forms::RecordKey& parent) {
    if (level != forms::Level::Line || call.storeToRead() == nullptr) {
        return {};
    }
    return forms::activityDescription(*call.storeToRead(), parent);
}

}  // namespace

std::string details(Call& call, const std::string& kindNumber, const forms::RecordKey& key,
                    bool correctsError) {
    if (call.failWithoutStoreToRead() || call.failWithoutMapper()) {
        return {};
    }
    const forms::FormKind* kind = forms::formKind(kindNumber);
    return kind == nullptr ? forms::emptyDetailForm() : showRecord(call, *kind, key, correctsError);
}

std::string registrationDetails(Call& call, const forms::RecordKey& key, bool correctsError) {
    if (call.failWithoutStoreToRead() || call.failWithoutMapper()) {
        return {};
    }
    return showRecord(call, forms::hourRegistrationKind(), key, correctsError);
}

std::string creation(Call& call, const std::string& kindNumber, const forms::RecordKey& parent) {
    if (call.failWithoutMapper()) {
        return {};
    }
    const forms::FormKind* kind = forms::formKind(kindNumber);
    if (kind == nullptr) {
        return {};
    }
    const std::string number = drawNumber(call, kind->level);
    return forms::creationForm(*call.mapper(), *kind, parent, number,
                               descriptionFor(call, kind->level, parent));
}

std::string newActivity(Call& call, const std::string& kindNumber) {
    const forms::FormKind& kind = forms::activityKind();
    if (call.failWithoutMapper() || kindNumber != kind.number) {
        return {};
    }
    const std::string number = drawNumber(call, kind.level);
    const auto failure = call.failWithoutStoreToRead();
    return forms::newActivityForm(
        *call.mapper(), number,
        failure ? *failure : forms::orderSelectRow(*call.mapper(), *call.storeToRead()));
}

std::string newMaterialLine(Call& call) {
    if (call.mapper() == nullptr) {
        call.setError(noStyleSheet);
        return std::string(noStyleSheet);
    }
    return forms::newMaterialForm(*call.mapper(), drawNumber(call, forms::materialKind().level));
}

std::string newRegistration(Call& call) {
    if (call.failWithoutMapper()) {
        return {};
    }
    return forms::newHourRegistrationForm(*call.mapper(),
                                          drawNumber(call, forms::hourRegistrationKind().level));
}

std::string orderOptions(Call& call) {
    const auto failure = call.failWithoutStoreToRead();
    return failure ? *failure : forms::orderOptions(*call.storeToRead());
}

std::string activityOptions(Call& call, const std::string& order) {
    const auto failure = call.failWithoutStoreToRead();
    return failure ? *failure : forms::activityOptions(*call.storeToRead(), order);
}

std::string registrationHeadings(Call& call, std::int16_t& columns, const std::string& section) {
    if (call.failWithoutMapper()) {
        return {};
    }
    const mapper::ColumnHeader header = forms::registrationHeadings(*call.mapper(), section);
    columns = static_cast<std::int16_t>(header.columns);
    return header.html;
}

}  // namespace tandril::form_calls
