// A file that comes into being whole or not at all: the text goes to a new file beside the target,
// which takes the target's place when everything is on the disk. Internal.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace Ovik {

/// The writing of one file. Until `commit` has succeeded nothing has happened to the target, and
/// what was written is removed with this object. What is no regular file, and what stands under
/// `/proc` or `/dev` (but for `/dev/shm`, which is a folder like others), can't be replaced: it is
/// written straight. A link is followed, so that the file behind it is replaced and not the link;
/// the other names of a file with several keep the old contents.
class OutputFile {
 public:
    /// Looks where `path` leads to; opens nothing.
    explicit OutputFile(const std::filesystem::path& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// True if what is written can't be taken back.
    bool isStraight() const { return isStraight_; }

    // Each of these answers with the first error of all, and does nothing after one.

    /// Fails for a folder, and for a file or a folder that this process may not write to. The
    /// permissions are those of the target if there is one.
    std::error_code open();
    std::error_code write(std::string_view text);
    /// Waits until the text is on the disk and puts the new file in the target's place.
    std::error_code commit();

 private:
    void resolve(std::filesystem::path path);
    void openBeside();
    void openNew(unsigned mode);
    void close();

    std::filesystem::path target_;     // no link
    std::filesystem::path temporary_;  // empty if there is none to remove
    std::error_code error_;
    int descriptor_ = -1;
    bool isStraight_ = false;
};

}  // namespace Ovik
