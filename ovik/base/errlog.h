// The log of a load: a text file that comes into being when there is something to say, and a set
// of warnings that can be asked for by code.
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "ovik/base/export.h"

namespace Ovik {

/// A log in a file, UTF-8 whatever the process locale is. The caller of a load owns it. One thread.
class OVIK_API ErrLog {
 public:
    /// Touches no file yet. A null `path` throws a null `wchar_t*`.
    explicit ErrLog(const wchar_t* path);
    explicit ErrLog(const std::filesystem::path& path);

    /// Takes over path, file and warnings; the source is left without a path.
    ErrLog(ErrLog&& other) noexcept;
    ErrLog& operator=(ErrLog&& other) noexcept;

    /// The stream of the log. The first call creates the file, or empties the one that is there;
    /// if it can't, the stream is in its fail state and what is written is lost.
    std::wostream& log();

    /// Records a warning; a null `text` counts as the empty one. True if it is new.
    bool addWarning(int code, const wchar_t* text);
    const std::multimap<int, std::wstring>& warnings() const { return warnings_; }
    void clearWarnings() { warnings_.clear(); }

    /// The path that the log was made with.
    const std::wstring& fileName() const { return fileName_; }
    /// Whether `log` has been called, not whether the file could be opened.
    bool isInitialized() const { return stream_ != nullptr; }

 private:
    std::wstring fileName_;
    std::filesystem::path path_;  // what is opened: not every path has a wide form
    std::multimap<int, std::wstring> warnings_;
    std::unique_ptr<std::wofstream> stream_;  // null until there is something to say
};

}  // namespace Ovik
