#include "home.h"

#include <functional>

#include "store/order_store.h"
#include "support/read_file.h"
#include "target.h"
#include "xml/document.h"

namespace tandril::fuzz {
namespace {

// As in the install folder; read once, since a home is made for each input.
const std::map<std::string, std::string>& sources() {
    static const std::map<std::string, std::string> read = [] {
        std::map<std::string, std::string> texts;
        for (const char* const name :
             {"Harbrook.xml", "FieldMapper.xml", "UploadReport.xml", "Removed.xml"}) {
            texts[name] = test::readFile(std::string(TANDRIL_FUZZ_FOLDER "/home/") + name);
        }
        return texts;
    }();
    return read;
}

std::string inInstallFolder(std::string_view name) {
    return std::string(paths::installFolder) + "\\" + std::string(name);
}

const test::FakeDatabase::Rows oneRow{{"COMP", "CCAR", "DSCA", "OSEQ", "CROB"},
                                      {{"100", "V1", "van", "1", "O'1"}}};

// The methods that only show, each with arguments that name something in the home.
using Show = void (*)(Client20& client);
constexpr Show shows[] = {
    [](Client20& c) { c.MyActivities(""); },
    [](Client20& c) { c.completedAgenda(); },
    [](Client20& c) { c.canceledAgenda(); },
    [](Client20& c) { c.ListOrders(); },
    [](Client20& c) { c.ShowErrorPool(); },
    [](Client20& c) { c.ShowErrorList(); },
    [](Client20& c) { c.StroreErrorOrders(); },
    [](Client20& c) { c.ViewOrders_W(); },
    [](Client20& c) { c.ViewOrders_SI(); },
    [](Client20& c) { c.ViewActivities_W(); },
    [](Client20& c) { c.ViewActivities_SI(); },
    [](Client20& c) { c.ViewHra_W(); },
    [](Client20& c) { c.ViewHra_SI(); },
    [](Client20& c) { c.ListHRALines("", "", ""); },
    [](Client20& c) { c.ViewCostLines_W("Material"); },
    [](Client20& c) { c.ViewCostLines_SI("Labor"); },
    [](Client20& c) { c.ListCostLines("Labor", "A1", "10"); },
    [](Client20& c) { c.ListCostLines("Other", "A2", "10"); },
    [](Client20& c) { c.BuildCostLines("2", "A1", "10"); },
    [](Client20& c) { c.CostLinesHeader("A1", "10"); },
    [](Client20& c) { c.CreateOrderDropDown(); },
    [](Client20& c) { c.CreateActivityDropDown("A1"); },
    [](Client20& c) { c.GetDetails("1", "A1", "", "", "", 0); },
    [](Client20& c) { c.GetDetails("1", "_1", "", "", "", 1); },
    [](Client20& c) { c.GetDetails("2", "A1", "10", "", "", 0); },
    [](Client20& c) { c.GetDetails("3", "A1", "10", "1", "", 0); },
    [](Client20& c) { c.GetDetails("4", "A1", "10", "1", "", 1); },
    [](Client20& c) { c.GetDetails("5", "A2", "10", "1", "", 1); },
    [](Client20& c) { c.GetDetailsForHRA("4", "", "", "H1", "", 1); },
    [](Client20& c) { c.CreateForm("1", "", ""); },
    [](Client20& c) { c.CreateForm("2", "A1", ""); },
    [](Client20& c) { c.CreateForm("4", "A1", "10"); },
    [](Client20& c) { c.CreateMaterialForm(); },
    [](Client20& c) { c.CreateFormforHra("4", "", ""); },
    [](Client20& c) { c.NewObject("2", "A1", ""); },
    [](Client20& c) {
        std::int16_t columns = 0;
        c.getColumnHeadingsForHRA(columns, "ccsocservclabr");
    },
    [](Client20& c) { c.MasterData("CCAR"); },
    [](Client20& c) { c.HyperLinkAndZoom(0, "ServiceCar", "", "order"); },
    [](Client20& c) { c.GetMailContent("Harbrook"); },
    [](Client20& c) { c.GetMailContent("UploadReport"); },
    [](Client20& c) { c.GetMailContent("StyleSheet"); },
};

}  // namespace

Home::Home() {
    for (const auto& [name, text] : sources()) {
        machine.files.put(inInstallFolder(name), text);
    }
    machine.files.put(std::string(paths::masterDataFolder) + "\\m.mdb", "");
    machine.database.answer("SELECT * FROM SERVICECAR", oneRow);
    client.Initialize();
    std::string name = "m";
    client.SetCurrentmdb(name);
    client.OpenDataBase();
}

std::map<std::string, std::string> Home::files() const {
    std::map<std::string, std::string> contents;
    for (const std::string& name : machine.files.fileNames(paths::installFolder)) {
        if (name != "log.txt") {
            contents[name] = machine.files.content(inInstallFolder(name));
        }
    }
    return contents;
}

void Home::requireWholeFiles() const {
    for (const std::string_view path :
         {paths::store, paths::report, paths::upload, paths::removed}) {
        require(!machine.files.fileExists(path) || isLoadable(path, machine.files.content(path)),
                path);
    }
}

void Home::requireStoreAsSaved() const {
    if (module.lastStore) {
        const auto saved = store::OrderStore::from(xml::load(machine.files, paths::store));
        require(saved && saved->document().bytes() == module.lastStore->document().bytes(),
                "the store in memory is the saved one");
    }
}

void Home::showSome(std::string_view input) {
    constexpr std::size_t share = 5;
    std::size_t next = std::hash<std::string_view>()(input) % share;
    for (; next < std::size(shows); next += share) {
        shows[next](client);
    }
}

void Home::sendAndPurge() {
    const std::string upload = client.CreateXMLStringForUpdate();
    if (!upload.empty()) {
        require(xml::Document::parse(upload).has_value(), "the upload is well-formed");
        require(machine.files.content(paths::upload) == upload, "the upload was kept");
    }
    client.deleteCompletedOrders("");
}

std::vector<std::string> homeTexts() {
    std::vector<std::string> texts;
    for (const auto& [name, text] : sources()) {
        texts.push_back(text);
    }
    return texts;
}

std::string homeText(std::string_view name) {
    return sources().at(std::string(name));
}

bool isLoadable(std::string_view path, const std::string& bytes) {
    auto document = xml::Document::decode(bytes);
    return document &&
           (path != paths::store || store::OrderStore::from(std::move(document)).has_value());
}

}  // namespace tandril::fuzz
