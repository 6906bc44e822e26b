// Where a save hands its text on to. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ovik/base/outputfile.h"

namespace Ovik {

/// A file, or nothing at all, where a save is tried that could not be taken back. Text is handed on
/// in pieces of about `kPiece` bytes.
class TextSink {
 public:
    static constexpr std::size_t kPiece = std::size_t{1} << 16;

    explicit TextSink(OutputFile* file) : file_(file) {}

    void put(std::string_view text) {
        size_ += text.size();
        if (file_ && !isBroken_) isBroken_ = bool(file_->write(text));
    }
    /// True if a write has failed, so that the rest need not be made.
    bool isBroken() const { return isBroken_; }
    /// The number of bytes put so far.
    std::uint64_t size() const { return size_; }

 private:
    OutputFile* file_;
    std::uint64_t size_ = 0;
    bool isBroken_ = false;
};

}  // namespace Ovik
