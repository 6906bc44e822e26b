// The pass over all entities of a load that judges and repairs their references. Internal.
#pragma once

#include "ovik/imp/load/entrytable.h"
#include "ovik/imp/validation.h"

namespace Ovik {

class ValidationContextImp final : public ValidationContext {
 public:
    ValidationContextImp(std::wostream& log, EntryTable& entries)
        : ValidationContext(log), entries_(entries) {}

    /// Judges every entity of the table. The number of those that were found valid here, and not
    /// before, through a reference from another.
    unsigned run();

    int validateRef(IfcEntity* target) override;

 private:
    int judge(EntityEntry& entry);

    EntryTable& entries_;
};

}  // namespace Ovik
