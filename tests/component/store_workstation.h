#pragma once

#include <string>
#include <string_view>

#include "component/workstation.h"
#include "store/records.h"

namespace tandril::test {

// A component that has been initialised, with a field mapper whose texts are the message codes in
// angle brackets' stead: "text of SLBEU0260".
struct StoreWorkstation : Workstation {
    StoreWorkstation() {
        client.Initialize();
        std::string texts;
        for (const std::string_view code :
             {"SLBEU0260", "SLBEU0261", "SLBEU0264", "SLBEU0265", "SLBEU0266",
              "SLBEU0267", "SLBEU0268", "SLBEU0269", "SLBEU0288", "SLBEU0289",
              "SLBEU0290", "SLBEU0291", "SLBEU0321", "SLBEU0322", "SLBEU0323",
              "SLBEU0324", "SLBEU0325", "SLBEU0326", "SLBEU0327", "SLBEU0328"}) {
            texts += "<T ID='" + std::string(code) + "' DESCRIPTION='text of " + std::string(code) +
                     "'/>";
        }
        putMapper("<m><I18N>" + texts + "</I18N></m>");
    }

    void putSections(std::string_view sections) { putStore(element("harbrook", sections)); }
    void putReport(std::string_view text) { machine.files.put(paths::report, text); }
    // What the store's file holds between its root's tags.
    std::string sections() const {
        const std::string text = machine.files.content(paths::store);
        return sectionsOf(store::OrderStore::from(xml::Document::parse(text)).value());
    }
    std::string report() const { return machine.files.content(paths::report); }
    std::string error() { return client.Get_Error(); }
    void forgetLog() { machine.files.put(paths::log, ""); }
};

inline std::string errorLine(std::string_view text) {
    return "Error =   " + std::string(text) + "\r\n";
}
inline std::string xmlLine(std::string_view text) {
    return "iXml =   " + std::string(text) + "\r\n";
}

}  // namespace tandril::test
