// The pass over all entities of a load that validates and repairs their references. Internal.
#pragma once

#include "ovik/imp/load/loadcontextimp.h"
#include "ovik/imp/validation.h"

namespace Ovik {

class ValidationContextImp final : public ValidationContext {
 public:
    explicit ValidationContextImp(LoadContextImp& load) : ValidationContext(load), load_(load) {}

    /// Validates every entity of the load. The number of those that were found valid here, and not
    /// before, through a reference from another.
    unsigned run();

    int validateRef(IfcEntity* target) override;

 private:
    int validate(EntityEntry& entry);

    LoadContextImp& load_;
};

}  // namespace Ovik
