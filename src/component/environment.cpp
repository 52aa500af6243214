#include "component/environment.h"

#include <algorithm>
#include <optional>
#include <string>

#include "component/paths.h"
#include "store/sections.h"
#include "xml/encoding.h"

namespace tandril::environment {
namespace {

using platform::Durability;

std::string inMasterDataFolder(std::string_view name) {
    return std::string(paths::masterDataFolder) + "\\" + std::string(name);
}

// Returns "" or the error text. The label needs the field mapper, which lies on the drive that is
// missing, so that the text is usually the fallback of the caller.
std::optional<std::string> ensureFolders(Call& call) {
    platform::FileSystem& files = call.files();
    if (!files.driveExists(paths::drive)) {
        return call.label("SLBEU0321");
    }
    for (const std::string_view folder : {paths::installFolder, paths::masterDataFolder}) {
        if (!files.folderExists(folder)) {
            files.createFolder(folder);
        }
    }
    return std::nullopt;
}

void registerDataSource(Call& call) {
    Settings& settings = call.settings();
    Module& module = call.module();
    const std::string& name = module.currentDatabase;
    settings.registerDataSource(inMasterDataFolder(name.empty() ? "" : name + ".mdb"),
                                call.files().systemFolder());
}

void ensureFiles(platform::FileSystem& files) {
    if (!files.fileExists(paths::log)) {
        files.replace(paths::log, "", Durability::Durable);
    }
    if (!files.fileExists(paths::store)) {
        files.replace(paths::store, store::emptyStore, Durability::Durable);
    }
}

bool holdsDatabase(const platform::FileSystem& files) {
    const auto names = files.fileNames(paths::masterDataFolder);
    return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
        const std::string type = files.typeDescription(inMasterDataFolder(name));
        return type == "MDB File" || type == "Microsoft Access Database";
    });
}

std::string xmlText(const std::optional<xml::Document>& document) {
    return document ? document->text() : std::string();
}

}  // namespace

std::string initialize(Call& call) {
    if (const auto missing = ensureFolders(call)) {
        std::string text = missing->empty()
                               ? call.label("SLBEU0259") + " " + std::string(paths::installFolder)
                               : *missing;
        call.setError(text);
        return text;
    }
    Settings& settings = call.settings();
    if (settings.exists("Currentmdb")) {
        call.module().currentDatabase = settings.currentDatabase();
    }
    settings.ensure();
    registerDataSource(call);
    call.setError("");
    ensureFiles(call.files());
    return {};
}

Variant saveWebPage(Call& call, std::string_view html) {
    const std::string bytes = call.files().encodeAnsi(std::string(html));
    call.files().replace(paths::page, bytes, Durability::Durable);
    call.log({});
    return {};
}

std::string variable(Call& call, std::string_view name) {
    if (name == "Currentmdb" && !holdsDatabase(call.files())) {
        return {};
    }
    return call.settings().read(name);
}

Variant mailContent(Call& call, std::string_view what) {
    if (what == "Harbrook") {
        const store::OrderStore* store = call.store();
        return {store != nullptr ? store->document().text() : std::string()};
    }
    if (what == "UploadReport") {
        return {xmlText(xml::load(call.files(), paths::report))};
    }
    if (what == "StyleSheet") {
        return {xmlText(xml::load(call.files(), paths::fieldMapper))};
    }
    if (what == "Log") {
        return {call.files().decodeAnsi(call.files().read(paths::log))};
    }
    return {};
}

void setDataSourceFile(Call& call, std::string_view fileName) {
    call.settings().setDataSourceFile(inMasterDataFolder(fileName));
}

void storeFieldMapper(Call& call, const std::string& xml, std::string_view overwrite) {
    if (!call.files().fileExists(paths::fieldMapper) || overwrite == "Yes") {
        const std::optional<std::string> encoded = xml::encodedAsDeclared(xml);
        call.files().replace(paths::fieldMapper, encoded ? *encoded : xml, Durability::Durable);
    }
}

}  // namespace tandril::environment
