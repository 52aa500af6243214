// The files of a home. Whatever one of them holds, every method can be called; a file that cannot
// be loaded keeps its bytes, under its own name or set aside, and one that can be loaded still can
// be behind all calls.
#include <array>

#include "component/kept_copies.h"
#include "home.h"
#include "platform/fault.h"
#include "target.h"

namespace tandril::fuzz {
namespace {

struct HomeFile {
    std::string_view name;
    std::string_view path;
    std::string_view damagedPath = {};  // where a damaged one may be set aside
};

constexpr std::array homeFiles = {
    HomeFile{"Harbrook.xml", paths::store},
    HomeFile{"FieldMapper.xml", paths::fieldMapper},
    HomeFile{"UploadReport.xml", paths::report, paths::damagedReport},
    HomeFile{"Removed.xml", paths::removed, "C:\\Vorn Tandril\\Removed.damaged.xml"},
};

// Documents that fit the home as it is.
constexpr const char* download =
    "<harbrook><ccsocservcordr><record ServiceOrder='B1' State='O'><OrderStatus>15</OrderStatus>"
    "</record><record ServiceOrder='A1' State='O'><OrderStatus>35</OrderStatus></record>"
    "</ccsocservcordr><ccsocservcactv><ServiceOrder ID='A2'><record Activity='77' State='O'>"
    "<ActivityStatus>15</ActivityStatus></record></ServiceOrder></ccsocservcactv></harbrook>";
constexpr const char* edit =
    "<harbrook><ccsocservcordr><record ServiceOrder='A1'><Description>new</Description></record>"
    "</ccsocservcordr></harbrook>";
constexpr const char* addition =
    "<harbrook><ccsocservcmatl><ServiceOrder ID='A1' Activity='10'><record LineNumber='_9'>"
    "<Quantity>1</Quantity></record></ServiceOrder></ccsocservcmatl></harbrook>";
constexpr const char* registration =
    "<ccsocservchra><record LineNumber='_8' State='N'/></ccsocservchra>";
constexpr const char* report =
    "<UploadReport><File ID='U'><Entry Status='Completed' Order='A2' Activity='' CostLine='' "
    "CostType=''/><Entry Status='Error' Order='A1' Activity='10' CostLine='1' CostType='Labor'/>"
    "</File></UploadReport>";

void changeEverything(Client20& client) {
    client.DownloadXml(download);
    client.updatexml(edit);
    client.AddXml(addition);
    client.SaveHra(registration);
    client.deleteNode({"A1"}, {"10"}, {"1"}, {"labor"});
    client.DownloadErrors(report);
    client.CompleteOrder();
}

// Both refuse files that are damaged, which is said as a fault.
void bringBack(Home& home) {
    try {
        std::vector<std::string> ids;
        for (const kept_copies::Copy& copy : kept_copies::list(home.module)) {
            ids.push_back(copy.id);
        }
        kept_copies::restore(home.module, ids, kept_copies::As::Unsent);
    } catch (const Fault&) {
        require(!isLoadable(paths::store, home.machine.files.content(paths::store)) ||
                    !isLoadable(paths::removed, home.machine.files.content(paths::removed)),
                "copies come back to files that load");
    }
}

void run(const HomeFile& file, std::string_view input) {
    Home home;
    const std::string bytes(input);
    home.machine.files.put(file.path, bytes);
    home.showSome(input);
    require(home.machine.files.content(file.path) == bytes, "what only shows changes no file");
    changeEverything(home.client);
    bringBack(home);
    home.sendAndPurge();
    home.showSome(input);
    const std::string after = home.machine.files.content(file.path);
    if (isLoadable(file.path, bytes)) {
        require(isLoadable(file.path, after), "a file that loaded loads");
    } else {
        require(after == bytes || home.machine.files.content(file.damagedPath) == bytes,
                "a file that does not load is kept");
    }
}

}  // namespace

std::vector<Target> fileTargets() {
    std::vector<Target> targets;
    for (const HomeFile& file : homeFiles) {
        targets.push_back(
            {std::string(file.name), [&file](std::string_view input) { run(file, input); }});
    }
    return targets;
}

}  // namespace tandril::fuzz
