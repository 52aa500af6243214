#include "cli/masterdata_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "component/paths.h"
#include "masterdata/tables.h"
#include "masterdata/transfer.h"
#include "platform/fault.h"
#include "platform/machine.h"
#include "platform/system_path.h"
#include "platform/utf8_path.h"

namespace tandril::cli {
namespace {

namespace fs = std::filesystem;

// An empty file that is removed in the end, unless it has got another name by then.
class WorkFile {
  public:
    explicit WorkFile(std::string path) : path_(std::move(path)) {
        if (!std::ofstream(platform::pathFromUtf8(path_), std::ios::binary | std::ios::trunc)) {
            throw Fault("cannot write \"" + path_ + "\"");
        }
    }
    ~WorkFile() {
        std::error_code ignored;
        fs::remove(platform::pathFromUtf8(path_), ignored);
    }
    WorkFile(const WorkFile&) = delete;
    WorkFile& operator=(const WorkFile&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

// A SQLite database in the making, which takes the place of another one only when it is whole.
class NewDatabase {
  public:
    explicit NewDatabase(std::string path)
        : path_(std::move(path)),
          file_(path_ + ".new"),
          connection_(platform::openDatabaseFile(file_.path(), file_.path())) {
        connection_->begin();
    }

    platform::Connection& connection() { return *connection_; }

    void finish() {
        connection_->commit();
        connection_.reset();
        fs::rename(platform::pathFromUtf8(file_.path()), platform::pathFromUtf8(path_));
    }

  private:
    std::string path_;
    WorkFile file_;
    std::unique_ptr<platform::Connection> connection_;
};

}  // namespace

MasterdataFolder::MasterdataFolder(const std::string& home)
    : folder_(platform::hostPath(home, paths::masterDataFolder)) {}

std::vector<MasterdataFolder::Entry> MasterdataFolder::databases() const {
    std::vector<Entry> found;
    std::error_code missing;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(platform::pathFromUtf8(folder_), missing)) {
        if (entry.is_regular_file() && entry.path().extension() == databaseExtension) {
            found.push_back({platform::utf8FromPath(entry.path().stem()),
                             platform::databaseKind(platform::utf8FromPath(entry.path()))});
        }
    }
    std::ranges::sort(found, {}, &Entry::name);
    return found;
}

bool MasterdataFolder::has(const std::string& name) const {
    return fs::is_regular_file(platform::pathFromUtf8(pathOf(name)));
}

void MasterdataFolder::create(const std::string& name, bool replace) const {
    NewDatabase database(newPath(name, replace));
    for (const masterdata::Table& table : masterdata::tables()) {
        createTable(database.connection(), table, standardColumns(table));
    }
    database.finish();
}

ImportResult MasterdataFolder::import(const std::string& file, const std::string& name,
                                      bool replace, const ImportProgress& progress) const {
    const auto source = platform::openDatabaseFile(file, file);
    NewDatabase target(newPath(name, replace));
    ImportResult result;
    for (const masterdata::Table& table : masterdata::tables()) {
        progress.begin(table.name);
        if (!copyTable(*source, target.connection(), table, [&] {
                ++result.rows;
                progress.row();
            })) {
            result.missingTables.emplace_back(table.name);
            createTable(target.connection(), table, standardColumns(table));
        }
        progress.end();
    }
    if (result.missingTables.size() == masterdata::tables().size()) {
        throw Fault("\"" + file + "\" holds none of the master-data tables");
    }
    target.finish();
    return result;
}

std::string MasterdataFolder::pathOf(const std::string& name) const {
    const bool hasBlankEnds = name.starts_with(' ') || name.ends_with(' ');
    if (name.empty() || hasBlankEnds || !platform::isPlainFileName(name)) {
        throw Fault("\"" + name + "\" cannot be the name of a database");
    }
    return folder_ + "/" + name + std::string(databaseExtension);
}

std::string MasterdataFolder::newPath(const std::string& name, bool replace) const {
    std::string path = pathOf(name);
    if (!replace && fs::exists(platform::pathFromUtf8(path))) {
        throw Fault("there is a database \"" + name + "\" already; --replace replaces it");
    }
    return path;
}

}  // namespace tandril::cli
