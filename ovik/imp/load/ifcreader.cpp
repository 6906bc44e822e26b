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
      load_(log, options, false),
      filer_(load_, nullptr) {}

IfcReader::~IfcReader() {
    dropModel();
}

IfcModel* IfcReader::load() {
    if (IfcParser::parseStream(stream_, log_, this)) {
        if (!pending_.empty()) runSecondPass();
        const unsigned numValid = ValidationContextImp(load_).run();
        if (numValid > 0) moveToModel(numValid);
        clearTable();
    } else {
        dropModel();
    }
    load_.writeLog();
    if (model_) model_->imp()->addToPool = true;
    return model_.release();
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
    model_.reset(IfcModel::create(schema_, false, false));
    load_.model = model_->imp();
    load_.model->addToPool = false;
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

void IfcReader::addData(int id, PooledName* name, ItemList* list, double position) {
    Ref<ItemList> items(list);
    OutputPrgMeter::addData(id, name, list, position);

    EntityEntry& entry = load_.entries[id];
    if (entry.hasEntity()) {
        load_.log << L"Duplicate data with id #" << id << L'\n';
        return;
    }
    const RtClass* const cls = findClass(name);
    if (!cls) {
        load_.log << L"Error: invalid class name in #" << id << L'\n';
        return;
    }
    ModelImp& model = *load_.model;
    IfcEntity* entity = nullptr;
    {
        // A number that has been referred to has its slot already.
        const Setting assigning(model.assignIds, !entry.slot);
        entity = cls->create(model_.get());
    }
    if (!entity) {
        load_.log << L"Error: failed to create class " << cls->className() << L'\n';
        return;
    }
    if (entry.slot) {
        *entry.slot = entity;
        entity->setId(EntityId(*entry.slot));
    } else {
        model.assignId(*entity);
        entry.slot = entity->id().slot();
    }
    entity->setIfcId(id);
    readEntity(*entity, std::move(items));
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

void IfcReader::readEntity(IfcEntity& entity, Ref<ItemList> items) {
    filer_.reset(items->items);
    bool isRead = false;
    try {
        isRead = entity.read(filer_);
    } catch (const SelectorNeedSecondPassRead&) {
        pending_.push_back({&entity, std::move(items)});
        return;
    }
    if (isRead) return;
    load_.entries[entity.ifcId()].setDone(false);
    load_.log << L"Failed to read object #" << entity.ifcId() << L" of class "
              << entity.isA()->className() << L'\n';
}

void IfcReader::runSecondPass() {
    load_.secondPass = true;
    const std::size_t count = pending_.size();
    for (std::size_t i = 0; i < count; ++i) {
        readEntity(*pending_[i].entity, std::move(pending_[i].items));
    }
    load_.secondPass = false;
}

void IfcReader::moveToModel(unsigned numValid) {
    model_->reserve(numValid + model_->getNumEntities());
    ModelImp& model = *load_.model;
    load_.entries.forEach([&](EntityEntry& entry) {
        if (!entry.isValid()) return;
        IfcEntity* const entity = *std::exchange(entry.slot, nullptr);
        model.pool.append(entity);
        model.assignId(*entity);
    });
}

void IfcReader::dropModel() {
    clearTable();
    model_.reset();
}

// Deletes every entity that the model hasn't got. Its slot is emptied, since a reference that no
// one has validated, as those in nested lists, may still lead there.
void IfcReader::clearTable() {
    pending_.clear();
    load_.entries.forEach([](EntityEntry& entry) {
        if (entry.slot) delete std::exchange(*entry.slot, nullptr);
    });
    load_.entries.clear();
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
