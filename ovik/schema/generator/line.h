// A line of a schema table, taken apart word by word.
#pragma once

#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Ovik::Generator {

/// Whatever is not as expected ends in `fail`.
class Line {
 public:
    Line(const std::string& file, int number, const std::string& text);

    int number() const { return number_; }
    /// True for a line that belongs to the declaration above it.
    bool indented() const { return indented_; }
    /// True if nothing stands in it, or only a remark.
    bool empty() const { return words_.empty(); }
    bool atEnd() const { return next_ == words_.size(); }

    /// The next word; empty at the end.
    const std::string& peek() const;
    void advance() { ++next_; }
    /// Moves past the next word if it is this one.
    bool accept(std::string_view word);
    /// Moves past the next word, which has to be this one.
    void expect(std::string_view word);
    /// Moves past a name: letters, digits and underscores, a capital first. `what` says what it
    /// names.
    std::string name(const std::string& what);
    /// Moves past a whole number from `least` to `most`.
    unsigned wholeNumber(const std::string& what, unsigned least = 0,
                         unsigned most = std::numeric_limits<unsigned>::max());
    /// Moves past a byte and its value, as `A=20`.
    std::pair<char, unsigned> byteValue(const std::string& what, unsigned most);
    /// Nothing may follow.
    void end() const;
    /// The words that follow.
    std::string rest() const;
    /// Back to the first word.
    void rewind() { next_ = 0; }

    /// Throws `std::runtime_error` with the file, the line and this text.
    [[noreturn]] void fail(const std::string& text) const;
    /// The same, for something else than the next word.
    [[noreturn]] void failExpected(const std::string& what) const;

 private:
    std::string file_;
    int number_;
    bool indented_;
    std::vector<std::string> words_;
    std::size_t next_ = 0;
};

}  // namespace Ovik::Generator
