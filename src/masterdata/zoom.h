#pragma once

#include <string>
#include <string_view>

#include "masterdata/source.h"

namespace tandril::masterdata {

// The window that shows the master data behind a field, as whole or in one record.
enum class WindowKind {
    Zoom,  // the records that the page can fill into the field; `value` narrows objects to those
           // of one configuration and means nothing to other fields
    Hyperlink  // the first record whose key is `value`
};

// The window, or a message in its place: there is no database, or no record. Throws Fault when the
// database cannot be asked.
std::string fieldWindow(const Source& source, WindowKind kind, std::string_view field,
                        std::string_view value);

}  // namespace tandril::masterdata
