// What an entity is handed to in order to validate and repair its references.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "ovik/base/export.h"
#include "ovik/imp/loadcontext.h"

namespace Ovik {

class IfcEntity;

/// Results of `validate` and `validateRef`, plain ints at the interface. A holder takes every value
/// but `kValid` for a failure.
enum ValidationCode {
    kInvalid = 0,  ///< to be removed
    kValid = 1,
    kNotLoaded = 2,  ///< the record is not there
};

/// The validation of one load: knows which entities have been validated and writes the reports. An
/// exact load looks at each reference by itself: it writes no reports, and an entity stays whatever
/// becomes of the entities that it refers to.
class OVIK_API ValidationContext {
 public:
    /// Validates the entity that a reference leads to, once, and returns its code, which is always
    /// `kValid` for an entity of an exact load. `target` is not null.
    virtual int validateRef(IfcEntity* target) = 0;

    /// Reports a failed attribute of the entity being validated: codes 0 and 2 have a text of their
    /// own, any other code writes nothing. `memberName` is the name as in the schema.
    void reportMember(int code, const wchar_t* memberName);
    /// Reports that the entity being validated has failed.
    void reportEntity(int code);

    /// The stream of the reports, and the instance number of the entity being validated.
    std::wostream& log() const { return load_->log; }
    int currentId() const { return currentId_; }

    /// True in an exact load.
    bool exact() const { return load_->exact; }

    /// Names the attribute that is validated from now on, for the losses; `position` orders those
    /// of an entity. Drops the cause that has been noted.
    void setAttribute(const char* name, std::uint32_t position) {
        load_->setAttribute(name, position);
    }
    /// Goes into the element at `index` of the list at hand, and out again.
    void enterElement(std::uint32_t index) { load_->place.enter(index); }
    void leaveElement() { load_->place.leave(); }
    /// Notes why the reference at hand fails; the first cause counts. The text is not copied: a
    /// literal. Always `kInvalid`.
    int fail(const char* cause) {
        if (!load_->cause) load_->cause = cause;
        return kInvalid;
    }
    /// What has been entered is not kept. The cause is the one noted, else `cause`. It goes to the
    /// log of an exact load and to the report.
    void lost(const char* cause);

 protected:
    explicit ValidationContext(LoadContext& load) : load_(&load) {}
    ~ValidationContext() = default;
    ValidationContext(const ValidationContext&) = default;

    void setCurrentId(int id) { currentId_ = id; }

 private:
    LoadContext* load_;
    int currentId_ = 0;
};

}  // namespace Ovik
