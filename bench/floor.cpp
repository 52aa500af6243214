#include "bench/floor.h"

#include <cstdio>
#include <list>
#include <memory>
#include <pugixml.hpp>
#include <stdexcept>

namespace tandril::bench {
namespace {

struct StringWriter : pugi::xml_writer {
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

void writePlainly(const std::string& path, const std::string& bytes) {
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(path.c_str(), "wb"));
    if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
        throw std::runtime_error("cannot write " + path);
    }
}

void require(const pugi::xml_parse_result& result) {
    if (!result) {
        throw std::runtime_error(result.description());
    }
}

std::string anyBytes(const Floor::Filled& file) {
    return std::string(file.bytes, 'x');
}

}  // namespace

void Floor::run(platform::FileSystem& files) const {
    constexpr auto durable = platform::Durability::Durable;
    std::list<pugi::xml_document> documents;
    for (const std::string& path : read) {
        require(documents.emplace_back().load_file(path.c_str()));
    }
    for (const std::string* text : given) {
        require(documents.emplace_back().load_buffer(text->data(), text->size()));
    }
    if (!changed.empty()) {
        StringWriter writer;
        documents.front().save(writer, "", pugi::format_raw | pugi::format_no_declaration);
        files.replace(changed, writer.text, durable);
    }
    for (const Filled& file : replaced) {
        files.replace(file.path, anyBytes(file), durable);
    }
    for (const Filled& file : appended) {
        const std::string bytes = anyBytes(file);
        files.append(file.path, bytes);
    }
    for (const Filled& file : written) {
        writePlainly(file.path, anyBytes(file));
    }
}

}  // namespace tandril::bench
