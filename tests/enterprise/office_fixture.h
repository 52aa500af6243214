#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <pugixml.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "enterprise/nodes.h"
#include "enterprise/office.h"
#include "platform/utf8_path.h"
#include "support/temporary_home.h"

namespace tandril::enterprise {

inline std::string fileText(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

inline std::string sampleText(const std::string& name) {
    return fileText(std::filesystem::path(TANDRIL_SAMPLES_DIR) / name);
}

// A folder that is gone when the test is over.
class TemporaryFolder {
  public:
    const std::filesystem::path& path() const { return path_; }

  private:
    test::TemporaryHome folder_;
    std::filesystem::path path_ = platform::pathFromUtf8(folder_.path());
};

// An office that starts from the sample orders, on the evening of 13 November 2026.
inline Office sampleOffice(const std::optional<std::filesystem::path>& folder = std::nullopt,
                           Language language = Language::English) {
    return Office(
        SampleFolder(TANDRIL_SAMPLES_DIR), folder, [] { return "20261113 190000"; }, language);
}

// An upload text from the inner text of its sections.
inline std::string upload(const std::map<std::string, std::string>& sections) {
    std::string text = "<harbrook>";
    for (const char* name : {"ordr", "actv", "matl", "labr", "othr", "hra"}) {
        const auto given = sections.find(name);
        text += std::string("<ccsocservc") + name + ">" +
                (given == sections.end() ? "" : given->second) + "</ccsocservc" + name + ">";
    }
    return text + "</harbrook>";
}

// An entry of a report as "Status Order/Activity/CostType CostLine Description", empty parts left
// empty.
inline std::string entryText(pugi::xml_node entry) {
    return attribute(entry, "Status") + " " + attribute(entry, "Order") + "/" +
           attribute(entry, "Activity") + "/" + attribute(entry, "CostType") +
           attribute(entry, "CostLine") +
           (attribute(entry, "Description").empty() ? "" : " " + attribute(entry, "Description"));
}

// The entries of the File that answers the upload itself, which is the last one.
inline std::vector<std::string> ownEntries(const std::string& report) {
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(report.c_str())) << report;
    std::vector<std::string> entries;
    for (const pugi::xml_node entry : elements(document.document_element().last_child())) {
        entries.push_back(entryText(entry));
    }
    return entries;
}

// A download, ready to be asked.
class Download {
  public:
    explicit Download(const std::string& text) {
        EXPECT_TRUE(document_.load_string(text.c_str())) << text;
    }
    pugi::xml_node order(const std::string& number) const {
        return root()
            .child("ccsocservcordr")
            .find_child_by_attribute("ServiceOrder", number.c_str());
    }
    pugi::xml_node activity(const std::string& order, const std::string& number) const {
        return root()
            .child("ccsocservcactv")
            .find_child_by_attribute("ID", order.c_str())
            .find_child_by_attribute("Activity", number.c_str());
    }
    pugi::xml_node line(const char* section, const std::string& order, const std::string& activity,
                        const std::string& number) const {
        return root()
            .child(section)
            .find_child([&](pugi::xml_node group) {
                return attribute(group, "ID") == order && attribute(group, "Activity") == activity;
            })
            .find_child_by_attribute("LineNumber", number.c_str());
    }
    pugi::xml_node root() const { return document_.document_element(); }

  private:
    pugi::xml_document document_;
};

}  // namespace tandril::enterprise
