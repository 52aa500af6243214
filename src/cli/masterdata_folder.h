#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database_file.h"

namespace tandril::cli {

// What the file name of every database ends in.
inline constexpr std::string_view databaseExtension = ".mdb";

// What an import tells while it runs and when it is done.
struct ImportProgress {
    std::function<void(std::string_view table)> begin;
    std::function<void()> row;
    std::function<void()> end;
};

struct ImportResult {
    std::size_t rows = 0;
    std::vector<std::string> missingTables;  // made without rows
};

// The folder of a home that holds the master-data databases. A database is named without ".mdb".
// Every function throws Fault when it cannot do what it says.
class MasterdataFolder {
  public:
    explicit MasterdataFolder(const std::string& home);

    struct Entry {
        std::string name;
        platform::DatabaseKind kind;
    };

    // All databases by name; none when there is no folder.
    std::vector<Entry> databases() const;
    bool has(const std::string& name) const;

    // Makes a SQLite database with all tables and no rows.
    void create(const std::string& name, bool replace) const;

    // Copies the tables of a database file anywhere on this machine into a SQLite database.
    ImportResult import(const std::string& file, const std::string& name, bool replace,
                        const ImportProgress& progress) const;

  private:
    std::string pathOf(const std::string& name) const;
    std::string newPath(const std::string& name, bool replace) const;

    std::string folder_;
};

}  // namespace tandril::cli
