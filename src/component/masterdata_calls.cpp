#include "component/masterdata_calls.h"

#include <optional>

#include "component/paths.h"
#include "masterdata/archive.h"
#include "masterdata/listing.h"
#include "masterdata/look_up.h"
#include "masterdata/synchronisation.h"
#include "masterdata/zoom.h"
#include "platform/fault.h"

namespace tandril::masterdata_calls {
namespace {

constexpr std::string_view dataSource = "Tandril Master Data";
constexpr std::int16_t hyperlinkMode = 1;

bool hasDatabase(Call& call) {
    std::string path(paths::masterDataFolder);
    path += "\\" + call.settings().currentDatabase() + ".mdb";
    return call.files().fileExists(path);
}

std::unique_ptr<platform::Connection> connect(Call& call) {
    return call.module().machine.database.open(dataSource);
}

platform::Connection& openConnection(Call& call) {
    const auto& connection = call.module().connection;
    if (!connection) {
        throw Fault("the connection to the master data is closed");
    }
    return *connection;
}

// Runs a builder of windows; without a field mapper the windows have no texts.
template <class Build>
std::string window(Call& call, Build build) {
    const mapper::FieldMapper* mapper = call.mapper();
    const mapper::FieldMapper blank = mapper::FieldMapper::blank();
    return build(
        masterdata::Source{mapper != nullptr ? *mapper : blank, hasDatabase(call),
                           [&call]() -> platform::Connection& { return openConnection(call); }});
}

class LookUp final : public forms::MasterDataLookUp {
  public:
    explicit LookUp(Call& call) : call_(call), hasDatabase_(hasDatabase(call)) {}

    bool hasValue(std::string_view field, std::string_view value) override {
        return !hasDatabase_ || masterdata::hasValue(connection(), field, value);
    }
    bool hasObject(std::string_view configuration, std::string_view object) override {
        return !hasDatabase_ || masterdata::hasObject(connection(), configuration, object);
    }
    bool hasObjectNumber(std::string_view configuration, std::string_view number) override {
        return !hasDatabase_ || masterdata::hasObjectNumber(connection(), configuration, number);
    }

  private:
    platform::Connection& connection() {
        if (call_.module().connection) {
            return *call_.module().connection;
        }
        if (refusal_) {
            throw Fault(*refusal_);
        }
        if (!own_) {
            own_ = connectOnce();
        }
        return *own_;
    }

    // A database that refuses to open is asked once, however many records a call checks.
    std::unique_ptr<platform::Connection> connectOnce() {
        try {
            return connect(call_);
        } catch (const Fault& refusal) {
            refusal_ = refusal.what();
            throw;
        }
    }

    Call& call_;
    bool hasDatabase_;
    std::unique_ptr<platform::Connection> own_;
    std::optional<std::string> refusal_;  // why it could not be opened
};

}  // namespace

void open(Call& call) {
    close(call);
    call.module().connection = connect(call);
}

void close(Call& call) {
    call.module().connection.reset();
}

std::string listing(Call& call, const std::string& code) {
    return window(
        call, [&](const masterdata::Source& source) { return masterdata::listing(source, code); });
}

std::string fieldWindow(Call& call, std::int16_t mode, const std::string& field,
                        const std::string& value) {
    const auto kind =
        mode == hyperlinkMode ? masterdata::WindowKind::Hyperlink : masterdata::WindowKind::Zoom;
    return window(call, [&](const masterdata::Source& source) {
        return masterdata::fieldWindow(source, kind, field, value);
    });
}

void startArchive(Call& call, const std::string& name) {
    masterdata::startArchive(call.module().machine.shell, paths::masterDataFolder, name,
                             [&](std::string_view code) { return call.label(code); });
}

std::string synchronise(Call& call, const std::string& extract) {
    return masterdata::synchronise(extract,
                                   [&] { return hasDatabase(call) ? connect(call) : nullptr; });
}

std::unique_ptr<forms::MasterDataLookUp> lookUp(Call& call) {
    return std::make_unique<LookUp>(call);
}

}  // namespace tandril::masterdata_calls
