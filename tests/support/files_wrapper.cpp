#include "support/files_wrapper.h"

#include "platform/fault.h"

namespace tandril::test {

void FaultyFiles::failOn(FileOperation operation, int nth) {
    left_[operation] = nth;
}

void FaultyFiles::pass(FileOperation operation) const {
    const auto left = left_.find(operation);
    if (left == left_.end() || left->second == 0) return;
    if (--left->second == 0) throw Fault("injected fault");
}

void FaultyFiles::createFolder(std::string_view path) {
    pass(FileOperation::CreateFolder);
    FilesWrapper::createFolder(path);
}

std::string FaultyFiles::read(std::string_view path) const {
    pass(FileOperation::Read);
    return FilesWrapper::read(path);
}

void FaultyFiles::replace(std::string_view path, const platform::Content& content,
                          platform::Durability durability) {
    pass(FileOperation::Replace);
    FilesWrapper::replace(path, content, durability);
}

void FaultyFiles::replaceTogether(std::span<const platform::NewContent> files) {
    for ([[maybe_unused]] const platform::NewContent& file : files) {
        pass(FileOperation::Replace);
    }
    FilesWrapper::replaceTogether(files);
}

void FaultyFiles::append(std::string_view path, const platform::Content& content) {
    pass(FileOperation::Append);
    FilesWrapper::append(path, content);
}

void FaultyFiles::rename(std::string_view from, std::string_view to) {
    pass(FileOperation::Rename);
    FilesWrapper::rename(from, to);
}

std::vector<std::string> FaultyFiles::fileNames(std::string_view folder) const {
    pass(FileOperation::List);
    return FilesWrapper::fileNames(folder);
}

}  // namespace tandril::test
