// The progress callback of a load or a save.
#pragma once

#include <cstdint>

#include "ovik/base/export.h"

namespace Ovik {

/// Told by a load or a save how big the job is and how far it has got; units are bytes of the file
/// in a load, entities in a save. The caller owns it. The calls come in the order `start`, any
/// number of `progress`, `finish`; none comes for a file that can't be opened. What `progress`
/// throws ends the job and goes on to its caller, but for a `std::string` in a load, which is
/// logged and leaves no model.
class OVIK_API ProgressMeter {
 public:
    /// Once, before the parse or the first record, with the size of the file or of the model.
    virtual void start(std::uint64_t total) = 0;
    /// Once, at the end, also of a job that failed. Must not throw.
    virtual void finish() = 0;
    /// Once per data record, with the number of characters read so far; once per entity, with the
    /// number of entities written so far.
    virtual void progress(std::uint64_t position) = 0;

 protected:
    // Nobody deletes a meter through this class.
    ~ProgressMeter() = default;
};

}  // namespace Ovik
