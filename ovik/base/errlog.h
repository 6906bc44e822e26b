// The log of a load: a text file that comes into being when there is something to say, or a stream
// of the caller, and a set of warnings that can be asked for by code.
#pragma once

#include <filesystem>
#include <fstream>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>

#include "ovik/base/export.h"

namespace Ovik {

/// A log in a file, UTF-8 whatever the process locale is, or on a stream. The caller of a load owns
/// it. One thread.
class OVIK_API ErrLog {
 public:
    /// Touches no file yet. A null `path` throws a null `wchar_t*`.
    explicit ErrLog(const wchar_t* path);
    explicit ErrLog(const std::filesystem::path& path);
    /// A log on `stream`, which stays the caller's and outlives the log. What is written goes there
    /// as wide characters, and how it is encoded is for the stream to say.
    explicit ErrLog(std::wostream& stream);

    /// Takes over path, file or stream, and warnings; the source is left without a path.
    ErrLog(ErrLog&& other) noexcept;
    ErrLog& operator=(ErrLog&& other) noexcept;

    /// The stream of the log. For a log in a file the first call creates that, or empties the one
    /// that is there; if it can't, the stream is in its fail state and what is written is lost.
    std::wostream& log();

    /// Records a warning; a null `text` counts as the empty one. True if it is new.
    bool addWarning(int code, const wchar_t* text);
    const std::multimap<int, std::wstring>& warnings() const { return warnings_; }
    void clearWarnings() { warnings_.clear(); }

    /// The path that the log was made with; empty for a log on a stream.
    const std::wstring& fileName() const { return fileName_; }
    /// Whether `log` has been called, not whether the file could be opened.
    bool isInitialized() const { return isInitialized_; }

 private:
    std::wstring fileName_;
    std::filesystem::path path_;  // what is opened: not every path has a wide form
    std::multimap<int, std::wstring> warnings_;
    std::unique_ptr<std::wofstream> file_;  // null until there is something to say
    std::wostream* stream_ = nullptr;       // the caller's, or that of file_
    bool isInitialized_ = false;
};

}  // namespace Ovik
