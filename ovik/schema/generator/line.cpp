// Taking a line of a schema table apart.
#include "line.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <sstream>
#include <stdexcept>

namespace Ovik::Generator {
namespace {

bool isCapital(char c) {
    return c >= 'A' && c <= 'Z';
}

bool isNameCharacter(char c) {
    return isCapital(c) || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

std::optional<unsigned> toNumber(std::string_view word) {
    unsigned value = 0;
    const char* const last = word.data() + word.size();
    const auto [end, error] = std::from_chars(word.data(), last, value);
    if (error != std::errc() || end != last) return std::nullopt;
    return value;
}

}  // namespace

Line::Line(const std::string& file, int number, const std::string& text)
    : file_(file), number_(number), indented_(text.starts_with(' ') || text.starts_with('\t')) {
    std::istringstream in(text);
    for (std::string word; in >> word;) words_.push_back(word);
    if (!words_.empty() && words_[0].starts_with('#')) words_.clear();
}

const std::string& Line::peek() const {
    static const std::string none;
    return next_ < words_.size() ? words_[next_] : none;
}

bool Line::accept(std::string_view word) {
    if (peek() != word) return false;
    ++next_;
    return true;
}

void Line::expect(std::string_view word) {
    if (!accept(word)) failExpected("\"" + std::string(word) + "\"");
}

std::string Line::name(const std::string& what) {
    const std::string& word = peek();
    if (word.empty() || !isCapital(word[0]) || !std::ranges::all_of(word, isNameCharacter)) {
        failExpected(what);
    }
    ++next_;
    return word;
}

unsigned Line::wholeNumber(const std::string& what, unsigned least, unsigned most) {
    const std::optional<unsigned> value = toNumber(peek());
    if (!value || *value < least || *value > most) failExpected(what);
    ++next_;
    return *value;
}

std::pair<char, unsigned> Line::byteValue(const std::string& what, unsigned most) {
    const std::string& word = peek();
    if (word.size() < 3 || word[1] != '=') failExpected(what);
    const std::optional<unsigned> value = toNumber(std::string_view(word).substr(2));
    if (!value || *value > most) failExpected(what);
    ++next_;
    return {word[0], *value};
}

void Line::end() const {
    if (!atEnd()) failExpected("the end of the line");
}

std::string Line::rest() const {
    std::string result;
    for (std::size_t i = next_; i < words_.size(); ++i)
        result += (i > next_ ? " " : "") + words_[i];
    return result;
}

void Line::fail(const std::string& text) const {
    throw std::runtime_error(file_ + ":" + std::to_string(number_) + ": " + text);
}

void Line::failExpected(const std::string& what) const {
    fail("expected " + what + ", found " +
         (peek().empty() ? "the end of the line" : "\"" + peek() + "\""));
}

}  // namespace Ovik::Generator
