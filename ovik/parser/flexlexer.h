// The shell of the scanner: input buffers, and the failures that end the process.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string_view>

#include "ovik/base/export.h"

namespace Ovik::IfcParser {

/// Interface of a scanner over switchable input buffers.
class OVIK_API FlexLexer {
 public:
    struct Buffer;

    virtual ~FlexLexer();
    /// Goes on with another buffer; the current one keeps its place. Buffers are not owned.
    virtual void switchToBuffer(Buffer* buffer) = 0;
    /// A new buffer of `size` characters on a stream; to be given back by `deleteBuffer`.
    virtual Buffer* createBuffer(std::istream* stream, std::size_t size) = 0;
    /// Null is ignored.
    virtual void deleteBuffer(Buffer* buffer) = 0;
    /// Empties the current buffer and goes on at the present place of a stream.
    virtual void restart(std::istream* stream) = 0;
    /// The next token, or 0 at the end of input.
    virtual int yylex() = 0;
    /// Reads from `in` and echoes to `out` from now on; a null pointer changes nothing.
    virtual void switchStreams(std::istream* in, std::ostream* out) = 0;

    /// The text that the last rule matched.
    std::string_view text() const { return {start_, static_cast<std::size_t>(cursor_ - start_)}; }
    std::size_t length() const { return text().size(); }

 protected:
    // The current match is start_..cursor_. Input ends at limit_, where a NUL stands.
    const char* start_ = nullptr;
    const char* cursor_ = nullptr;
    const char* limit_ = nullptr;
};

/// Buffer management. A match that doesn't fit doubles the buffer.
class OVIK_API yyFlexLexer : public FlexLexer {
 public:
    explicit yyFlexLexer(std::istream* in, std::ostream* out = nullptr);
    ~yyFlexLexer() override;
    yyFlexLexer(const yyFlexLexer&) = delete;
    yyFlexLexer& operator=(const yyFlexLexer&) = delete;

    void switchToBuffer(Buffer* buffer) override;
    Buffer* createBuffer(std::istream* stream, std::size_t size) override;
    void deleteBuffer(Buffer* buffer) override;
    void restart(std::istream* stream) override;
    /// The shell has no rules: ends the process.
    int yylex() override;
    void switchStreams(std::istream* in, std::ostream* out) override;

    /// Where messages go; null for nowhere.
    virtual std::wostream* logStream() = 0;
    /// 1 if the end of the input is final.
    virtual int wrap();
    /// Reads up to `maximum` characters; 0 at the end, negative if the stream is broken.
    virtual int LexerInput(char* buffer, int maximum);
    virtual void LexerOutput(const char* text, int size);
    /// Writes one line to standard error and ends the process with status 2.
    [[noreturn]] virtual void LexerError(const char* message);

 protected:
    /// Reads more behind the current match, which may move; start_ and limit_ follow, and cursor_
    /// is put at start_. False at the end of input.
    bool refill();

    std::istream* input() const;

 private:
    void loadBuffer();

    Buffer* own_;  // made by this object
    Buffer* current_;
    std::ostream* output_;
};

}  // namespace Ovik::IfcParser
