// The state of a load that reading, validation and reports share. Internal.
#pragma once

#include <optional>
#include <sstream>

#include "ovik/imp/load/entrytable.h"
#include "ovik/imp/load/losses.h"
#include "ovik/imp/loadcontext.h"
#include "ovik/imp/modelimp.h"

namespace Ovik {

class ErrLog;
struct IfcReadOptions;

class LoadContextImp final : public LoadContext {
 public:
    /// `log` and `options` may be null. `wantsLosses` has the losses collected even if no log asks
    /// for them.
    LoadContextImp(ErrLog* errLog, const IfcReadOptions* options, bool wantsLosses);

    EntityId handle(int number) override;
    bool isNewWarning(int code) override;
    void addLoss(const LossPlace& where, const char* why) override;
    void addSubstitution(const LossPlace& where, const char* why) override;
    /// The record at hand is not kept, for `why` in the attribute `where`.
    void addLostRecord(IfcLoadReport::RecordCause kind, const char* why,
                       const LossPlace& where = {});

    /// Writes what there is to say to the log, if there is one. To be called once, at the end.
    void writeLog();

    EntryTable entries;
    ModelImp* model = nullptr;  ///< gives the slots; null until the schema is known
    LoadLosses::Record record;  ///< the one that is being read or validated
    /// What the log of an exact load and the report need; none if nobody asks.
    std::optional<LoadLosses> losses;

 private:
    ErrLog* errLog_;
    std::wostringstream messages_;
};

}  // namespace Ovik
