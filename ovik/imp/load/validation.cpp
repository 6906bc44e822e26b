// Judging: every entity once, the targets of its references first.
#include "ovik/imp/validation.h"

#include <ostream>

#include "ovik/base/deepstack.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/load/validationimp.h"

namespace Ovik {

void ValidationContext::reportMember(int code, const wchar_t* memberName) {
    if (code == kInvalid) {
        *log_ << L"Invalid data member '" << memberName << L"' in #" << currentId_
              << L", removed.\n";
    } else if (code == kNotLoaded) {
        *log_ << L"Data member '" << memberName << L"' in # is not loaded\n";
    }
}

void ValidationContext::reportEntity(int code) {
    if (code == kInvalid) {
        *log_ << L"Invalid entity #" << currentId_ << L" is removed.\n";
    } else if (code == kNotLoaded) {
        *log_ << L"Entity #" << currentId_ << L" is not loaded.\n";
    }
}

unsigned ValidationContextImp::run() {
    unsigned numValid = 0;
    entries_.forEach([&](EntityEntry& entry) {
        // A number without a record is no entity.
        if (!entry.slot || !*entry.slot || (entry.flags & EntityEntry::kDone)) return;
        if (judge(entry) == kValid) ++numValid;
    });
    return numValid;
}

int ValidationContextImp::validateRef(IfcEntity* target) {
    EntityEntry* const entry = entries_.find(target->ifcId());
    if (!entry) return kNotLoaded;
    if (entry->flags & EntityEntry::kDone) return static_cast<int>(entry->flags & 1);
    return callDeep([&] { return judge(*entry); });
}

int ValidationContextImp::judge(EntityEntry& entry) {
    if (!entry.slot || !*entry.slot) {
        entry.flags = EntityEntry::kDone | kNotLoaded;
        reportEntity(kNotLoaded);
        return kNotLoaded;
    }
    IfcEntity& entity = **entry.slot;

    struct CurrentId {
        CurrentId(ValidationContextImp& c, int id) : context(c), saved(c.currentId()) {
            context.setCurrentId(id);
        }
        ~CurrentId() { context.setCurrentId(saved); }
        ValidationContextImp& context;
        const int saved;
    } const current(*this, entity.ifcId());

    if (entry.flags & EntityEntry::kVisiting) {
        log() << L"Circular reference found in #" << currentId() << L".\n";
        entry.flags = EntityEntry::kDone | kInvalid;
        reportEntity(kInvalid);
        return kInvalid;
    }
    entry.flags |= EntityEntry::kVisiting;
    const int code = entity.validate(*this);
    if (code != kValid) reportEntity(code);
    // This holds for an entity in a circle too, whatever the inner visit left here: if the circle
    // went through an optional reference, it is cut there now and the entity is valid.
    entry.flags = (static_cast<unsigned>(code) & EntityEntry::kCode) | EntityEntry::kDone;
    return code;
}

}  // namespace Ovik
