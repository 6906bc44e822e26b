// What stands behind an out-filer: the end of the text, to which values are put, and what each kind
// of writing does in a way of its own, which is records and numbers. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <string_view>
#include <utility>

namespace Ovik {

class IfcEntity;
class IfcOutFiler;

/// The end of the text of one writing. The buffer belongs to the derived class, which makes room
/// in its own way: by growth, or by handing on what is there.
class IfcOutFilerImp {
 public:
    explicit IfcOutFilerImp(bool exact) : exact_(exact) {}
    virtual ~IfcOutFilerImp() = default;
    IfcOutFilerImp(const IfcOutFilerImp&) = delete;
    IfcOutFilerImp& operator=(const IfcOutFilerImp&) = delete;

    /// True in a save: values are written so that they read back the same, missing ones as `$`.
    bool exact() const { return exact_; }

    /// Room for the next value, behind the comma that it may need: enough for any number.
    char* beginValue() {
        if (static_cast<std::size_t>(end_ - at_) < kRoom) makeRoom();
        if (!std::exchange(isFirst_, false)) *at_++ = ',';
        return at_;
    }
    /// The value that was put there ends at `end`.
    void endValue(char* end) { at_ = end; }
    /// Continues a value with a text of any length.
    void append(std::string_view text) {
        while (text.size() > static_cast<std::size_t>(end_ - at_)) {
            const auto part = static_cast<std::size_t>(end_ - at_);
            put(text.substr(0, part));
            text.remove_prefix(part);
            makeRoom();
        }
        put(text);
    }

    void append(char c) {
        if (at_ == end_) makeRoom();
        *at_++ = c;
    }

    void openItem(const char* name);
    void closeItem() {
        append(')');
        isFirst_ = false;
    }

    /// Begins the record of `entity`; false if it has been written, or isn't to be written now.
    virtual bool openRecord(const IfcEntity& entity) = 0;
    virtual void closeRecord() = 0;
    /// The number that a reference to `entity` is written with; 0 if it writes no record.
    virtual unsigned numberFor(const IfcEntity& entity, IfcOutFiler& out) = 0;

    /// Tells that the open record has a real in `attribute` that no file can hold. The first one
    /// counts. `attribute` may be null; it is kept by address.
    void refuse(const char* attribute) {
        if (refused_) return;
        refused_ = entity_;
        refusedAttribute_ = attribute;
    }
    const IfcEntity* refused() const { return refused_; }
    const char* refusedAttribute() const { return refusedAttribute_; }

    /// Runs `close`, which ends a scope and must not throw: an exception is kept for `finish`.
    template <class Close>
    void closing(Close close) noexcept {
        try {
            close();
        } catch (...) {
            if (!failure_) failure_ = std::current_exception();
        }
    }
    /// Throws what the end of a scope could not throw.
    void finish() const {
        if (failure_) std::rethrow_exception(failure_);
    }
    /// True if the rest need not be written.
    bool hasFailed() const { return failure_ || refused_; }

    std::uint64_t numRecords() const { return numRecords_; }
    /// The records of entities that had another number in their file.
    std::uint64_t numRenumbered() const { return numRenumbered_; }

 protected:
    /// What `makeRoom` makes at least.
    static constexpr std::size_t kRoom = 64;
    virtual void makeRoom() = 0;

    /// Puts what a record begins with: `#12= IFCWALL(`.
    void beginRecord(const IfcEntity& entity, unsigned number);

    char* at_ = nullptr;
    char* end_ = nullptr;
    bool isFirst_ = true;                // the next value is the first of its scope
    const IfcEntity* entity_ = nullptr;  // of the innermost open record

 private:
    void put(std::string_view text) {
        std::memcpy(at_, text.data(), text.size());
        at_ += text.size();
    }

    const bool exact_;
    std::uint64_t numRecords_ = 0;
    std::uint64_t numRenumbered_ = 0;
    const IfcEntity* refused_ = nullptr;
    const char* refusedAttribute_ = nullptr;
    std::exception_ptr failure_;
};

}  // namespace Ovik
