// What a load does not keep: collected while it runs, told in the order of the file when it ends.
// Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <unordered_set>
#include <vector>

#include "ovik/imp/loadcontext.h"
#include "ovik/imp/loadreport.h"

namespace Ovik {

class RtClass;

/// The line on which each record begins, by the record's place in the file. Most records begin one
/// line behind the one before and take no room.
class RecordLines {
 public:
    /// The next record begins on `line`. Its place, from 0.
    std::uint32_t add(std::uint32_t line);
    /// Where `record`, a place that `add` gave, begins.
    std::uint32_t operator[](std::uint32_t record) const;

 private:
    // Records from `record` on begin on `line` and the lines that follow.
    struct Run {
        std::uint32_t record;
        std::uint32_t line;
    };
    std::vector<Run> runs_;
    std::uint32_t count_ = 0;
};

/// The losses of one load. Texts that it is handed as `const char*` are literals or belong to the
/// schema; `keep` makes such a text of any other.
class LoadLosses {
 public:
    /// What kind of thing is lost.
    enum class Kind : std::uint8_t { Record, Attribute, Element, Substitution };

    /// The record that the next losses belong to.
    struct Record {
        std::uint32_t place = 0;  ///< in `lines`
        int number = 0;
        const RtClass* cls = nullptr;  ///< null if there is none of that name
    };

    RecordLines lines;

    void addRecord(const Record& record, IfcLoadReport::RecordCause kind, const char* cause,
                   const LossPlace& place = {});
    void addValue(const Record& record, Kind kind, const char* cause, const LossPlace& place);

    /// `text` for as long as the losses live; the same address for the same text.
    const char* keep(const std::string& text) { return texts_.insert(text).first->c_str(); }

    /// The number of losses, and a way back to fewer: a record that is read again loses anew.
    std::size_t size() const { return losses_.size(); }
    void shrink(std::size_t size) { losses_.resize(size); }

    /// Brings the losses in the order of the file. To be called once all are there.
    void sort();
    /// Writes a line for each: "line 7: #12 IFCWALL.GlobalId: cause".
    void write(std::wostream& log) const;
    /// Counts them in `report`, which has the first as data too.
    void fill(IfcLoadReport& report) const;

 private:
    struct Loss {
        Record record;
        LossPlace place;
        const char* cause;
        Kind kind;
        IfcLoadReport::RecordCause recordCause;
    };

    static std::string attributeText(const LossPlace& place);

    std::vector<Loss> losses_;
    std::unordered_set<std::string> texts_;
};

}  // namespace Ovik
