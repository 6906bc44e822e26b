// The passes of a load, and `IfcModel::read` over them.
#include "ovik/imp/load/ifcreader.h"

#include <algorithm>
#include <utility>

#include "ovik/base/errlog.h"
#include "ovik/base/inputfile.h"
#include "ovik/base/unicode.h"
#include "ovik/imp/headerparameters.h"
#include "ovik/imp/ifcentity.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/load/validationimp.h"
#include "ovik/imp/losscause.h"
#include "ovik/imp/modelimp.h"
#include "ovik/imp/schematable.h"
#include "ovik/imp/utf8.h"
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

// All but the caller's setting anew.
void startReport(IfcLoadReport& report) {
    const std::size_t maxEntries = report.maxEntries;
    report = {};
    report.maxEntries = maxEntries;
}

}  // namespace

IfcReader::IfcReader(std::istream& stream, ErrLog* log, ProgressMeter* meter,
                     const IfcReadOptions* options, IfcHeader* header, IfcLoadReport* report)
    : OutputPrgMeter(stream, meter),
      stream_(stream),
      log_(log),
      header_(header),
      report_(report),
      load_(log, options, report != nullptr),
      filer_(load_, nullptr) {
    if (report_) startReport(*report_);
}

IfcReader::~IfcReader() {
    dropModel();
}

IfcModel* IfcReader::load() {
    if (IfcParser::parseStream(stream_, log_, this)) {
        if (!pending_.empty()) runSecondPass();
        const unsigned numValid = ValidationContextImp(load_).run();
        if (numValid > 0) moveToModel(numValid);
        if (load_.losses) tellRemoved();
        clearTable();
    } else {
        dropModel();
    }
    if (load_.losses) load_.losses->sort();
    load_.writeLog();
    if (report_) fillReport();
    if (model_) model_->imp()->addToPool = true;
    return model_.release();
}

// Entities that are valid go too if none was found valid but by way of one that is removed.
void IfcReader::tellRemoved() {
    load_.entries.forEach([&](const EntityEntry& entry) {
        if (!entry.hasEntity() || !entry.isValid()) return;
        load_.record = {entry.record, (*entry.slot)->ifcId(), (*entry.slot)->isA()};
        load_.addLostRecord(IfcLoadReport::Invalid, LossCause::kOnlyThroughBad);
    });
}

void IfcReader::fillReport() {
    using NoModel = IfcLoadReport::NoModel;
    if (!model_) {
        report_->noModel = facts_.streamBroken       ? NoModel::BrokenStream
                           : report_->schema.empty() ? NoModel::BrokenHeader
                                                     : NoModel::UnknownSchema;
    }
    if (report_->noModel == NoModel::BrokenHeader) {
        report_->headerLine = facts_.errorLine;
        report_->headerColumn = facts_.errorColumn;
    }
    report_->recordsSeen = numRecords_;
    report_->recordsKept = model_ ? model_->getNumEntities() : 0;
    report_->comments = facts_.comments;
    report_->endsProperly = endsProperly_;
    load_.losses->fill(*report_);
}

bool IfcReader::setHeader(ParsedHeader*& parsed) {
    filer_.reset(parsed->fileSchema->list->items);
    XString name;
    if (!readStrings(name)) return false;
    if (report_) report_->schema = toUtf8(name);
    std::u16string capitals = name.c_str();
    for (char16_t& c : capitals) {
        if (c >= u'a' && c <= u'z') c = static_cast<char16_t>(c - u'a' + u'A');
    }
    const auto rows = schemaTable();
    const auto row = std::ranges::find(rows, capitals, &SchemaRow::name);
    if (row == rows.end()) return false;
    schema_ = (*row)->id;
    model_.reset((*row)->createModel(false, false));
    load_.model = model_->imp();
    load_.model->addToPool = false;
    if (header_) fillHeader(*parsed);
    // They are for records.
    if (load_.losses) load_.losses->shrink(0);
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

    if (!load_.exact) return;
    const auto texts = [](const ItemList& list) {
        std::vector<std::string> all;
        if (!list.items) return all;
        for (const IfcParser::ItemBase* item : *list.items) appendItem(all.emplace_back(), *item);
        return all;
    };
    HeaderParameters::keep(*header_, {.fileDescription = texts(*parsed.fileDescription->list),
                                      .fileName = texts(*parsed.fileName->list)});
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

    beginRecord(id);
    const RtClass* const cls = findClass(name);
    load_.record.cls = cls;
    if (load_.exact && id <= 0) {
        load_.addLostRecord(IfcLoadReport::ImpossibleNumber, LossCause::kImpossibleNumber);
        return;
    }
    EntityEntry& entry = load_.entries[id];
    if (entry.hasEntity()) {
        if (!load_.exact) load_.log << L"Duplicate data with id #" << id << L'\n';
        load_.addLostRecord(IfcLoadReport::NumberTaken, LossCause::kNumberTaken);
        return;
    }
    if (!cls) {
        if (!load_.exact) load_.log << L"Error: invalid class name in #" << id << L'\n';
        if (load_.losses) {
            load_.addLostRecord(IfcLoadReport::UnknownClass,
                                load_.losses->keep(LossCause::kUnknownClass + name->text));
        }
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
        if (!load_.exact) {
            load_.log << L"Error: failed to create class " << cls->className() << L'\n';
        }
        load_.addLostRecord(IfcLoadReport::AbstractClass, LossCause::kAbstractClass);
        return;
    }
    entry.record = load_.record.place;
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

// Makes it the one that losses belong to.
void IfcReader::beginRecord(int id) {
    ++numRecords_;
    load_.record.number = id;
    if (load_.losses) load_.record.place = load_.losses->lines.add(facts_.recordLine);
}

void IfcReader::lostData(int id, PooledName* className) {
    beginRecord(id);
    load_.record.cls = className ? findClass(className) : nullptr;
    load_.addLostRecord(IfcLoadReport::BrokenSyntax, LossCause::kBrokenSyntax);
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
    load_.place = {};
    load_.cause = nullptr;
    const std::size_t numLosses = load_.losses ? load_.losses->size() : 0;
    bool isRead = false;
    try {
        isRead = entity.read(filer_);
    } catch (const SelectorNeedSecondPassRead&) {
        // What is lost is lost again in the second reading.
        if (load_.losses) load_.losses->shrink(numLosses);
        pending_.push_back({&entity, std::move(items)});
        return;
    }
    if (isRead) return;
    // With the record goes what was noted in it.
    if (load_.losses) load_.losses->shrink(numLosses);
    load_.addLostRecord(IfcLoadReport::Unreadable,
                        load_.cause ? load_.cause : LossCause::kUnreadable, load_.place);
    EntityEntry& entry = load_.entries[entity.ifcId()];
    if (load_.exact) {
        delete std::exchange(*entry.slot, nullptr);
        return;
    }
    entry.setDone(false);
    load_.log << L"Failed to read object #" << entity.ifcId() << L" of class "
              << entity.isA()->className() << L'\n';
}

void IfcReader::runSecondPass() {
    load_.secondPass = true;
    const std::size_t count = pending_.size();
    for (std::size_t i = 0; i < count; ++i) {
        IfcEntity& entity = *pending_[i].entity;
        load_.record = {load_.entries[entity.ifcId()].record, entity.ifcId(), entity.isA()};
        readEntity(entity, std::move(pending_[i].items));
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
                         const IfcReadOptions* options, IfcHeader* header, IfcLoadReport* report) {
    return read(pathFromWide(path), log, meter, options, header, report);
}

IfcModel* IfcModel::read(const std::filesystem::path& path, ErrLog* log, ProgressMeter* meter,
                         const IfcReadOptions* options, IfcHeader* header, IfcLoadReport* report) {
    std::ifstream stream = openInput(path);
    if (!stream) {
        if (report) {
            startReport(*report);
            report->noModel = IfcLoadReport::NoModel::CannotOpen;
        }
        return nullptr;
    }
    return IfcReader(stream, log, meter, options, header, report).load();
}

}  // namespace Ovik
