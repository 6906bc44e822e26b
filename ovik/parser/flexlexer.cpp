// The shell of the scanner: input buffers, and the failures that end the process.
#include "ovik/parser/flexlexer.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <new>
#include <ostream>

namespace Ovik::IfcParser {
namespace {

constexpr std::size_t kBufferSize = 16384;
constexpr std::size_t kReadSize = 8192;

// One more character than the size, for the NUL behind the input.
char* newSpace(std::size_t size) {
    return new (std::nothrow) char[size + 1];
}

}  // namespace

struct FlexLexer::Buffer {
    std::istream* stream;
    std::size_t size;
    std::unique_ptr<char[]> space;
    // The unread part, valid while the buffer isn't the current one.
    const char* cursor;
    const char* limit;
    bool atEnd = false;
};

FlexLexer::~FlexLexer() = default;

yyFlexLexer::yyFlexLexer(std::istream* in, std::ostream* out)
    : own_(yyFlexLexer::createBuffer(in, kBufferSize)), current_(own_), output_(out) {
    loadBuffer();
}

yyFlexLexer::~yyFlexLexer() {
    delete own_;
}

void yyFlexLexer::loadBuffer() {
    start_ = cursor_ = current_->cursor;
    limit_ = current_->limit;
}

void yyFlexLexer::switchToBuffer(Buffer* buffer) {
    if (buffer == current_) return;
    current_->cursor = cursor_;
    current_->limit = limit_;
    current_ = buffer;
    loadBuffer();
}

FlexLexer::Buffer* yyFlexLexer::createBuffer(std::istream* stream, std::size_t size) {
    size = std::max<std::size_t>(size, 2);
    std::unique_ptr<char[]> space(newSpace(size));
    auto* buffer = new (std::nothrow) Buffer{stream, size, nullptr, space.get(), space.get()};
    if (!space || !buffer) LexerError("out of dynamic memory in yy_create_buffer()");
    buffer->space = std::move(space);
    buffer->space[0] = '\0';
    return buffer;
}

void yyFlexLexer::deleteBuffer(Buffer* buffer) {
    if (!buffer) return;
    if (buffer == current_ && buffer != own_) switchToBuffer(own_);
    if (buffer != own_) delete buffer;
}

void yyFlexLexer::restart(std::istream* stream) {
    current_->stream = stream;
    current_->atEnd = false;
    current_->space[0] = '\0';
    current_->cursor = current_->limit = current_->space.get();
    loadBuffer();
}

int yyFlexLexer::yylex() {
    LexerError("yyFlexLexer::yylex invoked but %option yyclass used");
    return 0;
}

void yyFlexLexer::switchStreams(std::istream* in, std::ostream* out) {
    if (in) restart(in);
    if (out) output_ = out;
}

int yyFlexLexer::wrap() {
    return 1;
}

std::istream* yyFlexLexer::input() const {
    return current_->stream;
}

int yyFlexLexer::LexerInput(char* buffer, int maximum) {
    std::istream& in = *input();
    if (!in.good()) return 0;
    in.read(buffer, maximum);
    return in.bad() ? -1 : static_cast<int>(in.gcount());
}

void yyFlexLexer::LexerOutput(const char* text, int size) {
    if (output_) output_->write(text, size);
}

void yyFlexLexer::LexerError(const char* message) {
    std::fprintf(stderr, "%s\n", message);
    std::exit(2);
}

bool yyFlexLexer::refill() {
    cursor_ = start_;
    if (current_->atEnd) return false;
    const auto kept = static_cast<std::size_t>(limit_ - start_);
    char* space = current_->space.get();
    if (kept + 1 >= current_->size) {
        char* const bigger = newSpace(current_->size * 2);
        if (!bigger) LexerError("fatal error - scanner input buffer overflow");
        std::memcpy(bigger, start_, kept);
        current_->space.reset(bigger);
        current_->size *= 2;
        space = bigger;
    } else if (start_ != space) {
        std::memmove(space, start_, kept);
    }
    const std::size_t room = std::min(current_->size - kept - 1, kReadSize);
    const int count = LexerInput(space + kept, static_cast<int>(room));
    if (count < 0) LexerError("input in flex scanner failed");
    start_ = cursor_ = space;
    limit_ = space + kept + count;
    space[kept + static_cast<std::size_t>(count)] = '\0';
    if (count == 0 && wrap()) current_->atEnd = true;
    return count > 0;
}

}  // namespace Ovik::IfcParser
