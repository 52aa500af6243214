#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tandril::platform {

// How far a write must have got when the call returns.
enum class Durability {
    Relaxed,  // atomic, but the last write may be lost when the machine loses power
    Durable,  // on the disk, the folder entry included
};

// All bytes that a file is to hold, given in pieces where they are too many to stand in memory at
// once.
class Content {
  public:
    using Sink = std::function<void(std::string_view piece)>;
    // Hands all pieces to the sink, in their order. May be asked again, and says the same then.
    using Source = std::function<void(const Sink& sink)>;

    // How long the pieces of a large content should be: such a piece fits into the processor's
    // cache, and is long enough for the call that writes it not to count.
    static constexpr std::size_t pieceSize = std::size_t{256} * 1024;

    explicit Content(Source source) : source_(std::move(source)) {}
    // Bytes that stay where they are for as long as this object. Texts are given as they are:
    template <std::convertible_to<std::string_view> Bytes>
    Content(const Bytes& bytes)  // NOLINT(google-explicit-constructor)
        : source_([whole = std::string_view(bytes)](const Sink& sink) { sink(whole); }) {}
    Content(std::string&&) = delete;

    void writeTo(const Sink& sink) const { source_(sink); }

  private:
    Source source_;
};

// What a file is to hold.
struct NewContent {
    std::string_view path;
    Content content;
};

// The files of the machine, addressed by the system's own paths ("C:\Vorn Tandril\log.txt",
// separators are backslashes). An implementation may map drive "C:" to a folder of its choice;
// callers never see the mapped path. Text in paths is UTF-8. Not safe for concurrent use.
//
// Every function that cannot do what it says throws Fault, unless it says otherwise.
class FileSystem {
  public:
    virtual ~FileSystem() = default;

    // Whether the drive ("C:") is there. Never throws.
    virtual bool driveExists(std::string_view drive) const = 0;
    // Whether the path names an existing folder. Never throws.
    virtual bool folderExists(std::string_view path) const = 0;
    // Whether the path names an existing file that is not a folder. Never throws.
    virtual bool fileExists(std::string_view path) const = 0;

    // Creates one folder; its parent must exist.
    virtual void createFolder(std::string_view path) = 0;

    // The whole content of an existing file.
    virtual std::string read(std::string_view path) const = 0;

    // Gives the file, which need not exist yet, that content. Atomic: after a crash,
    // a kill or a full disk the file is the old one or the new one, never a mixture. On a fault the
    // old file is as it was and no temporary file stays behind.
    virtual void replace(std::string_view path, const Content& content, Durability durability) = 0;

    // Replaces several files durably. All are written before the first one takes its place, in
    // their order: what keeps one from being written, such as a full disk, changes none of them.
    // Only a crash in the very moment of the change can leave the first ones new and the rest old.
    virtual void replaceTogether(std::span<const NewContent> files) = 0;

    // Adds the content at the end of an existing file; a missing file is a fault. On a fault the
    // file is as long as it was.
    virtual void append(std::string_view path, const Content& content) = 0;

    // Gives the file a new name in the same folder, replacing a file of that name.
    virtual void rename(std::string_view from, std::string_view to) = 0;

    // Names (without the folder) of the files of a folder, sorted; empty when there is no such
    // folder. Sub-folders are not listed.
    virtual std::vector<std::string> fileNames(std::string_view folder) const = 0;

    // What the shell calls a file of this kind, for example "MDB File".
    virtual std::string typeDescription(std::string_view path) const = 0;

    // Path of the system folder, without a trailing backslash.
    virtual std::string systemFolder() const = 0;

    // UTF-8 text in the encoding of plain text files (the ANSI code page where there is one; a
    // character that it lacks becomes "?"), and back.
    virtual std::string encodeAnsi(std::string text) const = 0;
    virtual std::string decodeAnsi(std::string_view bytes) const = 0;
};

}  // namespace tandril::platform
