// What the reading of records asks of the load that it is part of.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>

#include "ovik/base/export.h"
#include "ovik/imp/entityid.h"

namespace Ovik {

/// Where in a record something is not kept.
struct LossPlace {
    /// The most lists in one another that a schema has; of deeper ones the outermost are told.
    static constexpr std::size_t kMaxDepth = 3;

    /// The attribute as in the schema; null for the whole record.
    const char* attribute = nullptr;
    /// Of the attribute in a record, from 0; orders the losses of an entity.
    std::uint32_t position = 0;
    /// For an element its place in its list, from 1, the outermost list first; the others are 0.
    std::array<std::uint32_t, kMaxDepth> element{};
    /// How many lists lead to the element.
    std::uint32_t depth = 0;

    /// Goes into the element at `index`, from 0, of the list at hand, and out again.
    void enter(std::uint32_t index) {
        if (depth < kMaxDepth) element[depth] = index + 1;
        ++depth;
    }
    void leave() {
        --depth;
        if (depth < kMaxDepth) element[depth] = 0;
    }
};

/// One load, as seen by what reads attributes. Made by the library. One thread.
class OVIK_API LoadContext {
 public:
    /// Whether the load tolerates common mistakes; an exact load always does.
    const bool lenient;
    /// Whether it keeps values letter for letter, see `IfcReadOptions::exact`.
    const bool exact;
    /// True while records are read for the second time.
    bool secondPass = false;
    /// The reports of a load that is not exact.
    std::wostream& log;

    /// What is being read or validated. An in-filer finds the element by itself.
    LossPlace place;
    /// The first reason since then why something can't be kept; null if there is none.
    const char* cause = nullptr;

    void setAttribute(const char* name, std::uint32_t position) {
        place.attribute = name;
        place.position = position;
        cause = nullptr;
    }

    /// The handle for instance number `number`, which is not 0; its slot is made if need be.
    virtual EntityId handle(int number) = 0;
    /// True once per load and `code`, and never without a log.
    virtual bool isNewWarning(int code) = 0;
    /// The value at `where` is not kept: an attribute, or an element of a list.
    virtual void addLoss(const LossPlace& where, const char* why) = 0;
    /// In place of the value at `where`, which is missing, the model has a default.
    virtual void addSubstitution(const LossPlace& where, const char* why) = 0;

 protected:
    LoadContext(bool isLenient, bool isExact, std::wostream& messages)
        : lenient(isLenient), exact(isExact), log(messages) {}
    ~LoadContext() = default;
    LoadContext(const LoadContext&) = delete;
    LoadContext& operator=(const LoadContext&) = delete;
};

}  // namespace Ovik
