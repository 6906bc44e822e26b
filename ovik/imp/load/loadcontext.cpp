// What a load answers to those who read and validate, and its log.
#include <locale>

#include "ovik/base/errlog.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/load/loadcontextimp.h"

namespace Ovik {

LoadContextImp::LoadContextImp(ErrLog* errLog, const IfcReadOptions* options, bool wantsLosses)
    : LoadContext(!options || options->lenient || options->exact, options && options->exact,
                  messages_),
      errLog_(errLog) {
    messages_.imbue(std::locale::classic());
    // Nobody reads them without a log, and a bad file makes many.
    if (!errLog_) messages_.setstate(std::ios::badbit);
    if (wantsLosses || (exact && errLog_)) losses.emplace();
}

EntityId LoadContextImp::handle(int number) {
    EntityEntry& entry = entries[number];
    if (!entry.slot) entry.slot = &model->takeSlot();
    return EntityId(*entry.slot);
}

bool LoadContextImp::isNewWarning(int code) {
    return errLog_ && errLog_->addWarning(code, nullptr);
}

void LoadContextImp::addLoss(const LossPlace& where, const char* why) {
    if (!losses) return;
    using Kind = LoadLosses::Kind;
    losses->addValue(record, where.depth > 0 ? Kind::Element : Kind::Attribute, why, where);
}

void LoadContextImp::addSubstitution(const LossPlace& where, const char* why) {
    if (losses) losses->addValue(record, LoadLosses::Kind::Substitution, why, where);
}

void LoadContextImp::addLostRecord(IfcLoadReport::RecordCause kind, const char* why,
                                   const LossPlace& where) {
    if (losses) losses->addRecord(record, kind, why, where);
}

void LoadContextImp::writeLog() {
    if (!errLog_) return;
    if (!messages_.view().empty()) errLog_->log() << messages_.view();
    if (exact && losses->size() > 0) losses->write(errLog_->log());
}

}  // namespace Ovik
