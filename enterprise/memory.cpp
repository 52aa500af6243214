#include "enterprise/memory.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <sstream>
#include <stdexcept>

#include "enterprise/nodes.h"
#include "platform/home/host_file.h"
#include "platform/utf8_path.h"

namespace tandril::enterprise {
namespace {

constexpr int answersKept = 100;
constexpr std::array parts{"harbrook", "refused", "waiting", "answered"};

// FNV-1a, 64 bits. Together with the length it tells uploads apart; nobody gains by forging one.
std::string fingerprint(std::string_view bytes) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3;
    }
    std::ostringstream out;
    out << std::hex << hash;
    return out.str();
}

}  // namespace

Memory::Memory() : document_(std::make_unique<pugi::xml_document>()) {
    pugi::xml_node root = document_->append_child("enterprise");
    root.append_attribute("uploads").set_value(0);
    for (const char* name : parts) root.append_child(name);
}

Memory Memory::parse(std::string_view text) {
    Memory memory;
    const auto result = memory.document_->load_buffer(text.data(), text.size());
    const bool complete = std::ranges::all_of(
        parts, [&memory](const char* name) { return static_cast<bool>(memory.part(name)); });
    if (!result || !complete) throw std::runtime_error("it is not a memory of this server");
    return memory;
}

Memory Memory::copy() const {
    Memory memory;
    memory.document_->reset(*document_);
    return memory;
}

std::string Memory::text() const {
    std::ostringstream out;
    document_->save(out, " ");
    return out.str();
}

int Memory::countUpload() {
    document_->document_element().attribute("uploads").set_value(uploads() + 1);
    return uploads();
}

int Memory::uploads() const {
    return document_->document_element().attribute("uploads").as_int();
}

std::optional<std::string> Memory::answerTo(std::string_view upload) const {
    const std::string size = std::to_string(upload.size());
    const std::string hash = fingerprint(upload);
    for (const pugi::xml_node answered : part("answered").children("upload")) {
        if (answered.attribute("size").value() == size &&
            answered.attribute("fingerprint").value() == hash) {
            return xmlText(answered.first_child());
        }
    }
    return std::nullopt;
}

bool Memory::hasAnswered() const {
    return !part("answered").first_child().empty();
}

void Memory::rememberAnswer(std::string_view upload, Node report) {
    pugi::xml_node answered = part("answered");
    pugi::xml_node entry = answered.append_child("upload");
    entry.append_attribute("size").set_value(static_cast<unsigned long long>(upload.size()));
    entry.append_attribute("fingerprint").set_value(fingerprint(upload).c_str());
    entry.append_copy(report);
    const auto all = answered.children("upload");
    if (std::distance(all.begin(), all.end()) > answersKept) {
        answered.remove_child(answered.first_child());
    }
}

Memory::Node Memory::refusedRecord(const RecordKey& key) const {
    return part("refused").find_child([&key](pugi::xml_node record) {
        return record.attribute("Section").value() == std::string_view(sectionOf(key.kind)) &&
               record.attribute("Order").value() == key.order &&
               record.attribute("Activity").value() == key.activity &&
               record.attribute("Line").value() == key.line;
    });
}

bool Memory::isRefused(const RecordKey& key) const {
    return !refusedRecord(key).empty();
}

bool Memory::hasRefusedIn(const std::string& order, const std::string& activity) const {
    return !part("refused")
                .find_child([&](pugi::xml_node record) {
                    return record.attribute("Order").value() == order &&
                           (activity.empty() || record.attribute("Activity").value() == activity);
                })
                .empty();
}

void Memory::setRefused(const RecordKey& key, bool refused) {
    if (const pugi::xml_node known = refusedRecord(key)) {
        if (!refused) part("refused").remove_child(known);
        return;
    }
    if (!refused) return;
    pugi::xml_node record = part("refused").append_child("record");
    record.append_attribute("Section").set_value(sectionOf(key.kind));
    record.append_attribute("Order").set_value(key.order.c_str());
    record.append_attribute("Activity").set_value(key.activity.c_str());
    record.append_attribute("Line").set_value(key.line.c_str());
}

MemoryFile::MemoryFile(const std::optional<std::filesystem::path>& folder) {
    if (!folder) return;
    std::error_code error;
    std::filesystem::create_directories(*folder, error);
    if (error) {
        throw std::runtime_error("Cannot create the folder " + folder->string() + ": " +
                                 error.message());
    }
    file_ = *folder / "enterprise.xml";
}

std::optional<Memory> MemoryFile::load() const {
    if (!file_ || !std::filesystem::exists(*file_)) return std::nullopt;
    try {
        return Memory::parse(platform::readHostFile(platform::utf8FromPath(*file_)));
    } catch (const std::exception& failure) {
        throw std::runtime_error("Cannot read " + file_->string() + ": " + failure.what() +
                                 ". Move it away to start anew.");
    }
}

void MemoryFile::save(const Memory& memory) const {
    if (!file_) return;
    const std::string text = memory.text();
    platform::replaceHostFile(platform::utf8FromPath(*file_), text, platform::Durability::Durable);
}

}  // namespace tandril::enterprise
