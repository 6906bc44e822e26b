// The progress callback of a load.
#pragma once

#include <cstdint>

#include "ovik/base/export.h"

namespace Ovik {

/// Told by a load how big the job is and how far it has got; units are bytes of the file. The
/// caller owns it. The calls come in the order `start`, any number of `progress`, `finish`; none
/// comes for a file that can't be opened. What `progress` throws ends the load and goes on to its
/// caller, but for a `std::string`, which is logged and leaves no model.
class OVIK_API ProgressMeter {
 public:
    /// Once, before the parse, with the size of the file.
    virtual void start(std::uint64_t total) = 0;
    /// Once, after the load, also after a failed one. Must not throw.
    virtual void finish() = 0;
    /// Once per data record, with the number of characters read so far.
    virtual void progress(std::uint64_t position) = 0;

 protected:
    // Nobody deletes a meter through this class.
    ~ProgressMeter() = default;
};

}  // namespace Ovik
