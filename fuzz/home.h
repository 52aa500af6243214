#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "component/workstation.h"

namespace tandril::fuzz {

// A component on a machine of fakes, in the middle of an engineer's day: the files of fuzz/home,
// and an open master-data database in which nothing is found.
struct Home : test::Workstation {
    Home();

    // All files but the log, by name.
    std::map<std::string, std::string> files() const;
    // Every XML file that is there can be loaded, and the store is one.
    void requireWholeFiles() const;
    // The store that is kept for the next call is the one in the file.
    void requireStoreAsSaved() const;
    // Calls some of the methods that only show; which ones, the input decides, so that each has its
    // turn and yet all of them do not have to be waited for.
    void showSome(std::string_view input);
    // Sends what there is to send, and takes out what is done; what is left must be in order.
    void sendAndPurge();
};

// The files of fuzz/home.
std::vector<std::string> homeTexts();
std::string homeText(std::string_view name);

// Whether the component can load these bytes as the file of that path.
bool isLoadable(std::string_view path, const std::string& bytes);

}  // namespace tandril::fuzz
