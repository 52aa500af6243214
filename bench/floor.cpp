#include "bench/floor.h"

#include <list>
#include <pugixml.hpp>
#include <stdexcept>

#include "bench/workplace.h"

namespace tandril::bench {
namespace {

struct StringWriter : pugi::xml_writer {
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }
    std::string text;
};

void require(const pugi::xml_parse_result& result) {
    if (!result) {
        throw std::runtime_error(result.description());
    }
}

std::string anyBytes(const Floor::Filled& file) {
    return std::string(file.bytes, 'x');
}

}  // namespace

void parse(const std::string& path) {
    pugi::xml_document document;
    require(document.load_file(path.c_str()));
}

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
        const std::string bytes = anyBytes(file);
        files.replace(file.path, bytes, durable);
    }
    for (const Filled& file : appended) {
        const std::string bytes = anyBytes(file);
        files.append(file.path, bytes);
    }
    for (const Filled& file : written) {
        writeWhole(file.path, anyBytes(file));
    }
}

}  // namespace tandril::bench
