#include "component/settings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

namespace tandril {
namespace {

using platform::RegistryRoot;

constexpr std::string_view vendorParent = "SOFTWARE";
constexpr std::string_view vendorName = "Vorn";
constexpr std::string_view vendorKey = "SOFTWARE\\Vorn";
constexpr std::string_view productName = "Vorn Tandril";
constexpr std::string_view settingsKey = "SOFTWARE\\Vorn\\Vorn Tandril";
constexpr std::string_view dataFactoryKey = "SOFTWARE\\Microsoft\\DataFactory\\HandlerInfo";
constexpr std::string_view odbcKey = "SOFTWARE\\ODBC\\odbc.ini";
constexpr std::string_view sourceName = "Tandril Master Data";
constexpr std::string_view sourceKey = "SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data";
constexpr std::string_view engineKey =
    "SOFTWARE\\ODBC\\odbc.ini\\Tandril Master Data\\Engines\\Jet";
constexpr std::string_view sourcesKey = "SOFTWARE\\ODBC\\odbc.ini\\ODBC Data Sources";
constexpr std::string_view browserKey = "Software\\Microsoft\\Internet Explorer";
constexpr std::string_view browserMainKey = "Software\\Microsoft\\Internet Explorer\\Main";

// A value to create: a number where there is no text.
struct Default {
    std::string_view name;
    const char* text;
    std::uint32_t number = 0;
};

constexpr std::array settingDefaults{
    Default{"Currentmdb", ""},      Default{"MasterDataPath", ""},
    Default{"OrderId", nullptr, 1}, Default{"ActivityId", nullptr, 1},
    Default{"LineId", nullptr, 1},  Default{"Error", "1"},
    Default{"Mode", "Online"},      Default{"MasterData", "1"},
};

constexpr std::array engineDefaults{
    Default{"ImplicitCommitSync", "Yes"}, Default{"MaxBufferSize", nullptr, 2048},
    Default{"PageTimeOut", nullptr, 5},   Default{"Threads", nullptr, 3},
    Default{"UserCommitSync", "Yes"},
};

std::string_view counterName(LocalNumber kind) {
    switch (kind) {
        case LocalNumber::Order:
            return "OrderId";
        case LocalNumber::Activity:
            return "ActivityId";
        case LocalNumber::CostLine:
            return "LineId";
    }
    return "";
}

bool contains(const std::vector<std::string>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

void create(platform::Registry& registry, std::string_view key, const Default& value) {
    if (value.text != nullptr) {
        registry.setText(RegistryRoot::LocalMachine, key, value.name, value.text);
    } else {
        registry.setNumber(RegistryRoot::LocalMachine, key, value.name, value.number);
    }
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::string Settings::read(std::string_view name) const {
    if (name.empty()) {
        return {};
    }
    return registry_.read(RegistryRoot::LocalMachine, settingsKey, name).value_or("");
}

bool Settings::exists(std::string_view name) const {
    return registry_.read(RegistryRoot::LocalMachine, settingsKey, name).has_value();
}

void Settings::setError(std::string_view text) {
    registry_.setExisting(RegistryRoot::LocalMachine, settingsKey, "Error", text);
}

void Settings::set(std::string_view name, std::string_view text) {
    mustLast_ |= registry_.setExisting(RegistryRoot::LocalMachine, settingsKey, name, text);
}

std::string Settings::currentDatabase() const {
    return std::string(trimmed(read("Currentmdb")));
}

std::uint64_t Settings::nextLocalId(LocalNumber kind) {
    const std::string text = read(counterName(kind));
    std::uint64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    set(counterName(kind), std::to_string(number + 1));
    return number;
}

void Settings::ensure() {
    createMissingSettings();
    clearDataFactoryHandler();
}

void Settings::createMissingSettings() {
    if (!contains(registry_.subKeys(RegistryRoot::LocalMachine, vendorParent), vendorName)) {
        registry_.createKey(RegistryRoot::LocalMachine, vendorKey);
    }
    if (!contains(registry_.subKeys(RegistryRoot::LocalMachine, vendorKey), productName)) {
        registry_.createKey(RegistryRoot::LocalMachine, settingsKey);
    }
    const auto present = registry_.valueNames(RegistryRoot::LocalMachine, settingsKey);
    for (const Default& setting : settingDefaults) {
        if (!contains(present, setting.name)) {
            create(registry_, settingsKey, setting);
            mustLast_ = true;
        }
    }
}

// A handler that screens data access would keep the page from the master data.
void Settings::clearDataFactoryHandler() {
    for (const auto& [name, data] :
         {std::pair("handlerRequired", "0"), std::pair("DefaultHandler", "")}) {
        registry_.setExisting(RegistryRoot::LocalMachine, dataFactoryKey, name, data);
    }
}

void Settings::registerDataSource(std::string_view file, std::string_view systemFolder) {
    if (contains(registry_.subKeys(RegistryRoot::LocalMachine, odbcKey), sourceName)) {
        setDataSourceFile(file);
    } else {
        createDataSource(file, systemFolder);
    }
}

void Settings::setDataSourceFile(std::string_view file) {
    mustLast_ |= registry_.setExisting(RegistryRoot::LocalMachine, sourceKey, "DBQ", file);
}

void Settings::createDataSource(std::string_view file, std::string_view systemFolder) {
    const std::string dbq(file);
    const std::string driver = std::string(systemFolder) + "\\odbcjt32.dll";
    const std::array source{
        Default{"DBQ", dbq.c_str()},
        Default{"Description", "Master Data"},
        Default{"Driver", driver.c_str()},
        Default{"DriverId", nullptr, 19},
        Default{"FIL", "MS Access"},
        Default{"SafeTransactions", nullptr, 0},
        Default{"UID", ""},
    };
    registry_.createKey(RegistryRoot::LocalMachine, sourceKey);
    for (const Default& value : source) {
        create(registry_, sourceKey, value);
    }
    registry_.createKey(RegistryRoot::LocalMachine, engineKey);
    for (const Default& value : engineDefaults) {
        create(registry_, engineKey, value);
    }
    registry_.createKey(RegistryRoot::LocalMachine, sourcesKey);
    create(registry_, sourcesKey, Default{sourceName, "Microsoft Access Driver (*.mdb)"});
    mustLast_ = true;
}

void Settings::setDownloadFolder(std::string_view folder) {
    constexpr std::string_view name = "Download Directory";
    mustLast_ = true;
    if (!registry_.setExisting(RegistryRoot::CurrentUser, browserKey, name, folder)) {
        registry_.createKey(RegistryRoot::CurrentUser, browserKey);
        registry_.setText(RegistryRoot::CurrentUser, browserKey, name, folder);
    }
}

void Settings::setStartPage(std::string_view page) {
    mustLast_ |=
        registry_.setExisting(RegistryRoot::CurrentUser, browserMainKey, "Start Page", page);
}

void Settings::flush() {
    registry_.flush(mustLast_ ? platform::Durability::Durable : platform::Durability::Relaxed);
    mustLast_ = false;
}

}  // namespace tandril
