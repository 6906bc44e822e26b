// The passes of a load, and `IfcModel::read` over them.
#include "ovik/imp/load/ifcreader.h"

#include <locale>
#include <utility>

#include "ovik/base/errlog.h"
#include "ovik/base/inputfile.h"
#include "ovik/base/unicode.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/load/validationimp.h"
#include "ovik/imp/modelimp.h"
#include "ovik/parser/parser.h"

namespace Ovik {

using IfcParser::ItemList;
using IfcParser::ParsedHeader;
using IfcParser::PooledName;

namespace {

// One reference to a list of items, given back at the end of the scope.
class ListHolder {
 public:
    explicit ListHolder(ItemList* list) : list_(list) {}
    ~ListHolder() {
        if (list_) list_->release();
    }
    ListHolder(const ListHolder&) = delete;
    ListHolder& operator=(const ListHolder&) = delete;

    const IfcInFiler::Items* items() const { return list_->items; }
    ItemList* take() { return std::exchange(list_, nullptr); }

 private:
    ItemList* list_;
};

// A variable set for the length of a scope.
class Setting {
 public:
    Setting(bool& variable, bool value) : variable_(variable), saved_(variable) {
        variable = value;
    }
    ~Setting() { variable_ = saved_; }
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

 private:
    bool& variable_;
    const bool saved_;
};

}  // namespace

IfcReader::IfcReader(std::istream& stream, ErrLog* log, ProgressMeter* meter,
                     const IfcReadOptions* options, IfcHeader* header)
    : OutputPrgMeter(stream, meter),
      stream_(stream),
      log_(log),
      header_(header),
      lenient_(!options || options->lenient),
      exact_(options && options->exact),
      filer_(*this, nullptr, messages_) {
    messages_.imbue(std::locale::classic());
    // Nobody reads them without a log, and a bad file makes many.
    if (!log_) messages_.setstate(std::ios::badbit);
}

IfcReader::~IfcReader() {
    dropModel();
}

IfcModel* IfcReader::load() {
    if (IfcParser::parseStream(stream_, log_, this)) {
        if (!pending_.empty()) runSecondPass();
        const unsigned numValid = ValidationContextImp(messages_, entries_).run();
        if (numValid > 0) moveToModel(numValid);
        clearTable();
    } else {
        dropModel();
    }
    if (log_ && !messages_.view().empty()) log_->log() << messages_.view();
    if (model_) model_->imp()->addToPool = true;
    return std::exchange(model_, nullptr);
}

bool IfcReader::setHeader(ParsedHeader*& parsed) {
    filer_.reset(parsed->fileSchema->list->items);
    XString name;
    if (!readStrings(name)) return false;
    std::u16string capitals = name.c_str();
    for (char16_t& c : capitals) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
    }
    if (capitals == schemaName(eIFC2X3)) {
        schema_ = eIFC2X3;
    } else if (capitals == schemaName(eIFC4)) {
        schema_ = eIFC4;
    } else {
        return false;
    }
    model_ = IfcModel::create(schema_, false, false);
    model_->imp()->addToPool = false;
    if (header_) fillHeader(*parsed);
    delete std::exchange(parsed, nullptr);
    return true;
}

void IfcReader::fillHeader(const ParsedHeader& parsed) {
    // Each parameter stands at a place of its own, whether the one before it could be read or not.
    const auto text = [this](unsigned position, bool isList) {
        XString value;
        filer_.setCursor(position);
        if (!(isList ? readStrings(value) : filer_.readString(value))) value.setEmpty();
        return value;
    };
    filer_.reset(parsed.fileDescription->list->items);
    header_->setFileDescription(text(0, true));
    text(1, false);  // The implementation level is that of the writer.

    filer_.reset(parsed.fileName->list->items);
    header_->setFileName(text(0, false));
    header_->setTimeStamp(text(1, false));
    header_->setAuthor(text(2, true));
    header_->setOrganization(text(3, true));
    header_->setPreprocessorVersion(text(4, false));
    header_->setOriginatingSystem(text(5, false));
    header_->setAuthorization(text(6, false));

    filer_.reset(parsed.fileSchema->list->items);
    header_->setFileSchema(text(0, true));
}

// A list of strings as one text, with nothing between.
bool IfcReader::readStrings(XString& value) {
    const IfcInFiler::Items* items = nullptr;
    if (!filer_.readList(items, 0, 0)) return false;
    if (!items) {
        value.setEmpty();
        return true;
    }
    std::u16string joined;
    IfcInFiler elements(filer_, items);
    XString element;
    while (elements.cursor() < items->size() && elements.readString(element)) {
        joined += element.c_str();
    }
    value = XString(joined.c_str());
    return true;
}

void IfcReader::addData(int id, PooledName* name, ItemList* items, double position) {
    ListHolder list(items);
    OutputPrgMeter::addData(id, name, items, position);

    EntityEntry& entry = entries_[id];
    if (entry.slot && *entry.slot) {
        messages_ << L"Duplicate data with id #" << id << L'\n';
        return;
    }
    const RtClass* const cls = findClass(name);
    if (!cls) {
        messages_ << L"Error: invalid class name in #" << id << L'\n';
        return;
    }
    IfcEntity* entity = nullptr;
    {
        // A number that has been referred to has its slot already.
        const Setting assigning(model_->imp()->assignIds, !entry.slot);
        entity = cls->create(model_);
    }
    if (!entity) {
        messages_ << L"Error: failed to create class " << cls->className() << L'\n';
        return;
    }
    if (entry.slot) {
        *entry.slot = entity;
        entity->setId(EntityId(*entry.slot));
    } else {
        model_->imp()->assignId(*entity);
        entry.slot = entity->id().slot();
    }
    entity->setIfcId(id);
    readEntity(*entity, list.take());
}

const RtClass* IfcReader::findClass(PooledName* name) {
    if (name != lastName_) {
        const auto [place, isNew] = classCache_.try_emplace(name, nullptr);
        if (isNew) place->second = RtClass::findCreator(name->text.c_str(), schema_);
        lastName_ = name;
        lastClass_ = place->second;
    }
    return lastClass_;
}

// Takes over the reference to `items`.
void IfcReader::readEntity(IfcEntity& entity, ItemList* items) {
    ListHolder list(items);
    filer_.reset(list.items());
    bool isRead = false;
    try {
        isRead = entity.read(filer_);
    } catch (const SelectorNeedSecondPassRead&) {
        pending_.emplace_back(&entity, nullptr);
        pending_.back().second = list.take();
        return;
    }
    if (isRead) return;
    entries_[entity.ifcId()].flags = EntityEntry::kDone | kInvalid;
    messages_ << L"Failed to read object #" << entity.ifcId() << L" of class "
              << entity.isA()->className() << L'\n';
}

void IfcReader::runSecondPass() {
    const Setting second(secondPass_, true);
    const std::size_t count = pending_.size();
    for (std::size_t i = 0; i < count; ++i) {
        // A list that is null has been taken.
        readEntity(*pending_[i].first, std::exchange(pending_[i].second, nullptr));
    }
}

EntityId IfcReader::handle(int number) {
    EntityEntry& entry = entries_[number];
    if (!entry.slot) entry.slot = &model_->imp()->takeSlot();
    return EntityId(*entry.slot);
}

bool IfcReader::isNewWarning(int code) {
    return log_ && log_->addWarning(code, nullptr);
}

void IfcReader::moveToModel(unsigned numValid) {
    model_->reserve(numValid + model_->getNumEntities());
    ModelImp& imp = *model_->imp();
    entries_.forEach([&](EntityEntry& entry) {
        if (!(entry.flags & 1)) return;
        IfcEntity* const entity = *std::exchange(entry.slot, nullptr);
        imp.pool.append(entity);
        imp.assignId(*entity);
    });
}

void IfcReader::dropModel() {
    clearTable();
    if (model_) std::exchange(model_, nullptr)->release();
}

// Deletes every entity that the model hasn't got. Its slot is emptied, since a reference that no
// one has judged, as those in nested lists, may still lead there.
void IfcReader::clearTable() {
    for (const auto& [entity, list] : pending_) {
        if (list) list->release();
    }
    pending_.clear();
    entries_.forEach([](EntityEntry& entry) {
        if (entry.slot) delete std::exchange(*entry.slot, nullptr);
    });
    entries_.clear();
}

IfcModel* IfcModel::read(const wchar_t* path, ErrLog* log, ProgressMeter* meter,
                         const IfcReadOptions* options, IfcHeader* header) {
    return read(pathFromWide(path), log, meter, options, header);
}

IfcModel* IfcModel::read(const std::filesystem::path& path, ErrLog* log, ProgressMeter* meter,
                         const IfcReadOptions* options, IfcHeader* header) {
    std::ifstream stream = openInput(path);
    if (!stream) return nullptr;
    return IfcReader(stream, log, meter, options, header).load();
}

}  // namespace Ovik
