// The log of a load. Its file is UTF-8; the conversion takes any character, so that odd text in a
// message can't put the stream into its fail state.
#include "ovik/base/errlog.h"

#include <cstring>
#include <cwchar>
#include <locale>
#include <utility>

#include "ovik/base/unicode.h"

namespace Ovik {
namespace {

// Wide text to UTF-8, for writing only. A pair of 16-bit surrogates becomes one character; what is
// no character becomes U+FFFD.
class Utf8Conversion final : public std::codecvt<wchar_t, char, std::mbstate_t> {
 protected:
    result do_out(std::mbstate_t& state, const wchar_t* from, const wchar_t* fromEnd,
                  const wchar_t*& fromNext, char* to, char* toEnd, char*& toNext) const override {
        fromNext = from;
        toNext = to;
        for (; fromNext != fromEnd; ++fromNext) {
            // Room for an unpaired surrogate and the character after it.
            if (toEnd - toNext < 2 * kLongestUtf8) return partial;
            const auto c = static_cast<char32_t>(*fromNext);
            const char32_t high = takeHigh(state);
            if (high && isLowSurrogate(c)) {
                toNext = putUtf8(joinSurrogates(high, c), toNext);
                continue;
            }
            if (high) toNext = putUtf8(kReplacementCharacter, toNext);
            if (isHighSurrogate(c)) {
                keepHigh(state, c);
            } else {
                toNext = putUtf8(c, toNext);
            }
        }
        return ok;
    }

    result do_unshift(std::mbstate_t& state, char* to, char* toEnd, char*& toNext) const override {
        toNext = to;
        if (toEnd - to < kLongestUtf8) return partial;
        if (takeHigh(state)) toNext = putUtf8(kReplacementCharacter, toNext);
        return ok;
    }

    bool do_always_noconv() const noexcept override { return false; }
    int do_encoding() const noexcept override { return -1; }
    int do_max_length() const noexcept override { return 2 * kLongestUtf8; }

 private:
    // The conversion's state is a high surrogate that waits for its other half, or 0.
    static_assert(sizeof(std::mbstate_t) >= sizeof(char16_t));
    static char32_t takeHigh(std::mbstate_t& state) {
        char16_t high = 0;
        std::memcpy(&high, &state, sizeof high);
        state = {};
        return high;
    }
    static void keepHigh(std::mbstate_t& state, char32_t c) {
        const auto high = static_cast<char16_t>(c);
        std::memcpy(&state, &high, sizeof high);
    }
};

}  // namespace

ErrLog::ErrLog(const wchar_t* path) {
    if (!path) throw static_cast<wchar_t*>(nullptr);
    fileName_ = path;
    path_ = pathFromWide(path);
}

ErrLog::ErrLog(const std::filesystem::path& path) : fileName_(wideFromPath(path)), path_(path) {}

ErrLog::ErrLog(std::wostream& stream) : stream_(&stream) {}

ErrLog::ErrLog(ErrLog&& other) noexcept {
    *this = std::move(other);
}

ErrLog& ErrLog::operator=(ErrLog&& other) noexcept {
    if (this == &other) return *this;
    fileName_ = std::exchange(other.fileName_, {});
    path_ = std::exchange(other.path_, {});
    warnings_ = std::exchange(other.warnings_, {});
    file_ = std::move(other.file_);
    stream_ = std::exchange(other.stream_, nullptr);
    isInitialized_ = std::exchange(other.isInitialized_, false);
    return *this;
}

std::wostream& ErrLog::log() {
    isInitialized_ = true;
    if (!stream_) {
        file_ = std::make_unique<std::wofstream>();
        file_->imbue(std::locale(std::locale::classic(), new Utf8Conversion));
        file_->open(path_);
        stream_ = file_.get();
    }
    return *stream_;
}

bool ErrLog::addWarning(int code, const wchar_t* text) {
    const std::wstring words = text ? text : L"";
    const auto [first, last] = warnings_.equal_range(code);
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second == words) return false;
    }
    warnings_.emplace_hint(last, code, words);
    return true;
}

}  // namespace Ovik
