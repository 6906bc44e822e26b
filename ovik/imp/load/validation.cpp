// Validation: every entity once, the targets of its references first.
#include "ovik/imp/validation.h"

#include <ostream>

#include "ovik/base/deepstack.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/load/validationimp.h"
#include "ovik/imp/losscause.h"

namespace Ovik {

void ValidationContext::reportMember(int code, const wchar_t* memberName) {
    if (exact()) return;
    if (code == kInvalid) {
        log() << L"Invalid data member '" << memberName << L"' in #" << currentId_
              << L", removed.\n";
    } else if (code == kNotLoaded) {
        log() << L"Data member '" << memberName << L"' in # is not loaded\n";
    }
}

void ValidationContext::reportEntity(int code) {
    if (exact()) return;
    if (code == kInvalid) {
        log() << L"Invalid entity #" << currentId_ << L" is removed.\n";
    } else if (code == kNotLoaded) {
        log() << L"Entity #" << currentId_ << L" is not loaded.\n";
    }
}

void ValidationContext::lost(const char* cause) {
    load_->addLoss(load_->place, load_->cause ? load_->cause : cause);
    load_->cause = nullptr;
}

unsigned ValidationContextImp::run() {
    unsigned numValid = 0;
    load_.entries.forEach([&](EntityEntry& entry) {
        // A number without a record is no entity.
        if (!entry.hasEntity() || entry.isDone()) return;
        if (validate(entry) == kValid) ++numValid;
    });
    return numValid;
}

int ValidationContextImp::validateRef(IfcEntity* target) {
    // Each reference is validated by itself, and no entity goes for another's sake.
    if (exact()) return kValid;
    EntityEntry* const entry = load_.entries.find(target->ifcId());
    if (!entry) return kNotLoaded;
    if (entry->isDone()) {
        if (entry->isValid()) return kValid;
        return fail(LossCause::kToRemoved);
    }
    const bool isCircle = entry->isVisiting();
    const int code = callDeep([&] { return validate(*entry); });
    if (code != kValid) fail(isCircle ? LossCause::kInCircle : LossCause::kToRemoved);
    return code;
}

int ValidationContextImp::validate(EntityEntry& entry) {
    if (!entry.hasEntity()) {
        entry.setDone(false);
        reportEntity(kNotLoaded);
        return kNotLoaded;
    }
    IfcEntity& entity = **entry.slot;

    // What is known of the entity at hand, put back when the visit ends.
    struct Visit {
        Visit(ValidationContextImp& c, int id)
            : context(c), savedId(c.currentId()), record(c.load_.record), place(c.load_.place) {
            context.setCurrentId(id);
        }
        ~Visit() {
            context.setCurrentId(savedId);
            context.load_.record = record;
            context.load_.place = place;
            context.load_.cause = nullptr;
        }
        ValidationContextImp& context;
        const int savedId;
        const LoadLosses::Record record;
        const LossPlace place;
    } const visit(*this, entity.ifcId());

    if (entry.isVisiting()) {
        log() << L"Circular reference found in #" << currentId() << L".\n";
        entry.setDone(false);
        reportEntity(kInvalid);
        return kInvalid;
    }
    entry.setVisiting();
    load_.record = {entry.record, entity.ifcId(), entity.isA()};
    load_.place = {};
    const int code = entity.validate(*this);
    if (exact()) {
        entry.setDone(true);
        return kValid;
    }
    if (code != kValid) {
        reportEntity(code);
        load_.addLostRecord(IfcLoadReport::Invalid, load_.cause ? load_.cause : LossCause::kInvalid,
                            load_.place);
    }
    // This holds for an entity in a circle too, whatever the inner visit left here: if the circle
    // went through an optional reference, it is cut there now and the entity is valid.
    // Bit 0 is the code of a class from outside.
    entry.setDone(code & 1);
    return code;
}

}  // namespace Ovik
