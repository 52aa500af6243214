#include "bench/workplace.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

#include "component/paths.h"

namespace tandril::bench {
namespace {

namespace fs = std::filesystem;

// A random name in the folder for temporary files.
fs::path temporaryName() {
    return fs::temp_directory_path() / ("tandril-bench-" + std::to_string(std::random_device()()));
}

// A folder with what Initialize needs.
std::string makeFolder() {
    const fs::path path = temporaryName();
    fs::create_directories(path / "Vorn Tandril" / "MasterData");
    return path.string();
}

}  // namespace

Workplace::Workplace()
    : folder_(makeFolder()),
      machine_(platform::openMachine(folder_)),
      module_(machine_->machine()),
      client_(module_) {
    fs::copy_file(TANDRIL_SAMPLES "/fieldmapper-en.xml", pathOf(paths::fieldMapper));
    client_.Initialize();
    client_.Set_Mode("Offline");
}

Workplace::~Workplace() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::string Workplace::pathOf(std::string_view systemPath) const {
    return platform::hostPath(folder_, systemPath);
}

void Workplace::putStore(const std::string& file) {
    tidy();
    fs::copy_file(file, pathOf(paths::store), fs::copy_options::overwrite_existing);
}

void Workplace::removeStore() {
    tidy();
    fs::remove(pathOf(paths::store));
}

void Workplace::tidy() {
    for (const std::string_view left : {paths::report, paths::upload, paths::removed}) {
        fs::remove(pathOf(left));
    }
    writeWhole(pathOf(paths::log), "");
}

TemporaryFile::TemporaryFile(std::string_view content) : path_(temporaryName().string()) {
    writeWhole(path_, content);
}

TemporaryFile::~TemporaryFile() {
    std::error_code ignored;
    fs::remove(path_, ignored);
}

void require(bool holds, const char* what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

std::string readWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    std::string bytes(fs::file_size(path), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

void writeWhole(const std::string& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace tandril::bench
