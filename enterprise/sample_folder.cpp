#include "enterprise/sample_folder.h"

#include <fstream>
#include <pugixml.hpp>
#include <sstream>
#include <stdexcept>

#include "xml/document.h"

namespace tandril::enterprise {
namespace {

std::string readDocument(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    if (!in || !(bytes << in.rdbuf())) {
        throw std::runtime_error("Cannot read the sample file " + file.string());
    }
    if (!xml::Document::decode(bytes.str())) {
        throw std::runtime_error("The sample file " + file.string() + " is not well-formed");
    }
    return bytes.str();
}

void addInsertedRows(MasterTables& tables, const std::string& changes) {
    const auto document = xml::Document::decode(changes);
    for (const auto& found : document->root().select_nodes("//HBMasterData/*/*[@STATUS='I']")) {
        MasterTables::Row row;
        for (const pugi::xml_node column : found.node().children()) {
            row[column.name()] = column.child_value();
        }
        tables.add(found.node().parent().name(), std::move(row));
    }
}

}  // namespace

SampleFolder::SampleFolder(const std::filesystem::path& folder)
    : english_(readDocument(folder / "fieldmapper-en.xml")),
      german_(readDocument(folder / "fieldmapper-de.xml")),
      dutch_(readDocument(folder / "fieldmapper-nl.xml")),
      orders_(readDocument(folder / "orders.xml")),
      masterDataChanges_(readDocument(folder / "masterdata" / "extract.xml")),
      tables_(MasterTables::load(folder / "masterdata")) {
    addInsertedRows(tables_, masterDataChanges_);
}

const std::string& SampleFolder::fieldMapper(Language language) const {
    switch (language) {
        case Language::German:
            return german_;
        case Language::Dutch:
            return dutch_;
        case Language::English:
            break;
    }
    return english_;
}

}  // namespace tandril::enterprise
