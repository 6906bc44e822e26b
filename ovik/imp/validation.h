// What an entity is handed to in order to judge and repair its references.
#pragma once

#include <iosfwd>

#include "ovik/base/export.h"

namespace Ovik {

class IfcEntity;

/// Results of `validate` and `validateRef`, plain ints at the interface. A holder takes every value
/// but `kValid` for a failure.
enum ValidationCode {
    kInvalid = 0,  ///< to be removed
    kValid = 1,
    kNotLoaded = 2,  ///< the record is not there
};

/// The judge of one load: knows which entities have been judged and writes the reports.
class OVIK_API ValidationContext {
 public:
    /// Judges the entity that a reference leads to, once, and returns its code. `target` is not
    /// null.
    virtual int validateRef(IfcEntity* target) = 0;

    /// Reports a failed attribute of the entity being judged: codes 0 and 2 have a text of their
    /// own, any other code writes nothing. `memberName` is the name as in the schema.
    void reportMember(int code, const wchar_t* memberName);
    /// Reports that the entity being judged has failed.
    void reportEntity(int code);

    /// The stream of the reports, and the instance number of the entity being judged.
    std::wostream& log() const { return *log_; }
    int currentId() const { return currentId_; }

 protected:
    explicit ValidationContext(std::wostream& log) : log_(&log) {}
    ~ValidationContext() = default;
    ValidationContext(const ValidationContext&) = default;

    void setCurrentId(int id) { currentId_ = id; }

 private:
    std::wostream* log_;
    int currentId_ = 0;
};

}  // namespace Ovik
