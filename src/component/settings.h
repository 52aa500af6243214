#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace tandril {

// The counters that number records made on the workstation.
enum class LocalNumber { Order, Activity, CostLine };

// The component's settings in the registry, and the registry values of others that it looks after.
// A setting that is missing reads as "" and cannot be set; only ensure() creates settings. Nothing
// reaches the disk before flush().
class Settings {
  public:
    explicit Settings(platform::Registry& registry) : registry_(registry) {}

    // The data of the setting as text; "" for an empty or unknown name. Names compare exactly.
    std::string read(std::string_view name) const;
    bool exists(std::string_view name) const;

    // The error text of the last call; "1" and "" mean that there was none.
    std::string error() const { return read("Error"); }
    void setError(std::string_view text);

    // "Online" or "Offline", as the page has set it; "" until the component was initialised.
    std::string mode() const { return read("Mode"); }
    void setMode(std::string_view mode) { set("Mode", mode); }

    // The base name of the current master-data database, without blanks at its ends.
    std::string currentDatabase() const;
    void setCurrentDatabase(std::string_view name) { set("Currentmdb", name); }

    // Draws the next number of a counter and moves the counter on. A missing counter reads as 0
    // and is not created.
    std::uint64_t nextLocalId(LocalNumber kind);

    // Creates the settings that are missing, with their defaults, and lets the browser's data
    // access pass.
    void ensure();

    // Points the data source at a file, creating the source when it is missing.
    void registerDataSource(std::string_view file, std::string_view systemFolder);
    // Points an existing data source at a file.
    void setDataSourceFile(std::string_view file);

    void setDownloadFolder(std::string_view folder);
    void setStartPage(std::string_view page);

    // Writes what changed; waits for the disk when more than the error text did.
    void flush();

  private:
    void set(std::string_view name, std::string_view text);
    void createMissingSettings();
    void clearDataFactoryHandler();
    void createDataSource(std::string_view file, std::string_view systemFolder);

    platform::Registry& registry_;
    bool mustLast_ = false;  // a change must survive a power failure
};

}  // namespace tandril
