// The steps of replacing a file: resolve, open beside, write, flush, rename.
#include "ovik/base/outputfile.h"

#include <fcntl.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#if defined(_WIN32)
#include <io.h>
#include <sys/stat.h>
#else
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Ovik {
namespace {

namespace fs = std::filesystem;

// As many links in a row as Linux follows.
constexpr int kMostLinks = 40;
constexpr int kMostNames = 100;
constexpr unsigned kUsualMode = 0666;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

// True if `text` is the folder `folder` or stands in it.
bool isIn(const std::string& text, std::string_view folder) {
    return text.starts_with(folder) && (text.size() == folder.size() || text[folder.size()] == '/');
}

// Where files are windows to the system: `/dev/stdout` may lead to a regular file, and yet it is
// the open file that is meant and not its name.
bool isOfSystem(const fs::path& path) {
    std::error_code ignored;
    const std::string text = fs::absolute(path, ignored).lexically_normal().generic_string();
    return isIn(text, "/proc") || (isIn(text, "/dev") && !isIn(text, "/dev/shm"));
}

// A name for a new file in the folder of `target`: short, so that it fits wherever that does.
fs::path newNameBeside(const fs::path& target) {
    static std::atomic<std::uint32_t> count =
        static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    return target.parent_path() / (".ovik-" + std::to_string(++count));
}

#if defined(_WIN32)

int openFile(const fs::path& path, int flags, unsigned /*mode*/) {
    return _wopen(path.c_str(), flags | _O_BINARY | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
}
auto writeSome(int descriptor, std::string_view text) {
    return _write(descriptor, text.data(), static_cast<unsigned>(text.size()));
}
bool flushToDisk(int descriptor) {
    return _commit(descriptor) == 0;
}
int closeFile(int descriptor) {
    return _close(descriptor);
}

#else

int openFile(const fs::path& path, int flags, unsigned mode) {
    return ::open(path.c_str(), flags | O_CLOEXEC, mode);
}

auto writeSome(int descriptor, std::string_view text) {
    return ::write(descriptor, text.data(), text.size());
}

bool flushToDisk(int descriptor) {
    while (::fsync(descriptor) != 0) {
        // Some file systems have nothing to flush.
        if (errno == EINVAL || errno == ENOSYS || errno == ENOTSUP) return true;
        if (errno != EINTR) return false;
    }
    return true;
}

int closeFile(int descriptor) {
    // A close that is interrupted has closed the file.
    return ::close(descriptor) == 0 || errno == EINTR ? 0 : -1;
}

// While it exists, a pipe that nobody reads from any more is an error of `write` and not a signal
// that would end the process.
class PipeGuard {
 public:
    PipeGuard() {
        ::sigemptyset(&pipe_);
        ::sigaddset(&pipe_, SIGPIPE);
        sigset_t pending;
        ::sigpending(&pending);
        wasPending_ = ::sigismember(&pending, SIGPIPE) == 1;
        ::pthread_sigmask(SIG_BLOCK, &pipe_, &before_);
    }
    ~PipeGuard() {
        sigset_t pending;
        ::sigpending(&pending);
        int taken = 0;
        if (!wasPending_ && ::sigismember(&pending, SIGPIPE) == 1) ::sigwait(&pipe_, &taken);
        ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    }
    PipeGuard(const PipeGuard&) = delete;
    PipeGuard& operator=(const PipeGuard&) = delete;

 private:
    sigset_t pipe_;
    sigset_t before_;
    bool wasPending_;
};

#endif

}  // namespace

OutputFile::OutputFile(const fs::path& path) {
    resolve(path);
}

OutputFile::~OutputFile() {
    close();
    std::error_code ignored;
    if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

void OutputFile::resolve(fs::path path) {
    fs::file_type type = fs::file_type::symlink;
    for (int links = 0; !isStraight_ && type == fs::file_type::symlink; ++links) {
        target_ = path;
        isStraight_ = isOfSystem(path);
        type = fs::symlink_status(path, error_).type();
        if (type != fs::file_type::symlink) break;
        const fs::path next = fs::read_symlink(path, error_);
        if (!error_ && links == kMostLinks) {
            error_ = std::make_error_code(std::errc::too_many_symbolic_link_levels);
        }
        if (error_) return;
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    switch (type) {
        case fs::file_type::not_found:
            // A target without a name, or whose folder isn't there, fails later.
            error_.clear();
            break;
        case fs::file_type::directory:
            error_ = std::make_error_code(std::errc::is_a_directory);
            break;
        case fs::file_type::regular:
        case fs::file_type::symlink:
        case fs::file_type::none:
            break;
        default:
            isStraight_ = true;
    }
}

std::error_code OutputFile::open() {
    if (error_) return error_;
    if (!isStraight_) {
        openBeside();
    } else if (descriptor_ = openFile(target_, O_WRONLY | O_CREAT | O_TRUNC, kUsualMode);
               descriptor_ < 0) {
        error_ = lastError();
    }
    return error_;
}

void OutputFile::openBeside() {
    // A file that may not be written must not be replaced either, so it is opened for a look.
    const int old = openFile(target_, O_WRONLY, 0);
    if (old < 0) {
        if (errno == ENOENT && target_.has_filename()) {
            openNew(kUsualMode);
        } else {
            error_ = lastError();
        }
        return;
    }
#if defined(_WIN32)
    closeFile(old);
    openNew(kUsualMode);
#else
    struct stat status {};
    if (::fstat(old, &status) != 0) error_ = lastError();
    closeFile(old);
    if (error_) return;
    openNew(status.st_mode & 0777);
    if (error_) return;
    // Only the super-user can give a file away, and some file systems know no permissions; what
    // was made is never more open than the old file.
    if (::fchown(descriptor_, status.st_uid, status.st_gid) != 0) errno = 0;
    if (::fchmod(descriptor_, status.st_mode & 07777) != 0) errno = 0;
#endif
}

void OutputFile::openNew(unsigned mode) {
    for (int names = 0; names < kMostNames; ++names) {
        fs::path name = newNameBeside(target_);
        descriptor_ = openFile(name, O_WRONLY | O_CREAT | O_EXCL, mode);
        if (descriptor_ >= 0) {
            temporary_ = std::move(name);
            return;
        }
        if (errno != EEXIST) break;
    }
    error_ = lastError();
}

std::error_code OutputFile::write(std::string_view text) {
#if !defined(_WIN32)
    std::optional<PipeGuard> guard;
    if (isStraight_) guard.emplace();
#endif
    while (!error_ && !text.empty()) {
        const auto count = writeSome(descriptor_, text);
        if (count > 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (count == 0) {
            error_ = std::make_error_code(std::errc::io_error);
        } else if (errno != EINTR) {
            error_ = lastError();
        }
    }
    return error_;
}

void OutputFile::close() {
    if (descriptor_ < 0) return;
    if (closeFile(descriptor_) != 0 && !error_) error_ = lastError();
    descriptor_ = -1;
}

std::error_code OutputFile::commit() {
    if (!error_ && !isStraight_ && !flushToDisk(descriptor_)) error_ = lastError();
    close();
    if (error_ || isStraight_) return error_;
    fs::rename(temporary_, target_, error_);
    if (error_) return error_;
    temporary_.clear();
#if !defined(_WIN32)
    // The name is in place for good when the folder is on the disk, too. It can't be taken back
    // any more, and a folder need not be readable: so this is done as far as it can be.
    const fs::path folder = target_.has_parent_path() ? target_.parent_path() : fs::path(".");
    if (const int opened = openFile(folder, O_RDONLY | O_DIRECTORY, 0); opened >= 0) {
        flushToDisk(opened);
        closeFile(opened);
    }
#endif
    return error_;
}

}  // namespace Ovik
