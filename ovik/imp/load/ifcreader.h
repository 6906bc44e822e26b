// One load: takes the records that the parser finds and makes a model of them. Internal.
#pragma once

#include <iosfwd>
#include <unordered_map>
#include <vector>

#include "ovik/base/ref.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/load/loadcontextimp.h"
#include "ovik/imp/rtclass.h"
#include "ovik/parser/fileoutput.h"

namespace Ovik {

class XString;

/// The reader of one file. Until the model is complete, its entities belong to the reader, and the
/// slots of the model lead to them; then those that are valid move to the model's pool, in
/// ascending order of instance number, and the others are deleted.
class IfcReader final : public IfcParser::OutputPrgMeter {
 public:
    /// All but `stream` may be null.
    IfcReader(std::istream& stream, ErrLog* log, ProgressMeter* meter,
              const IfcReadOptions* options, IfcHeader* header, IfcLoadReport* report);
    ~IfcReader() override;

    /// Runs the load. The model, with a reference for the caller, or null. To be called once.
    IfcModel* load();

    // What the parser calls.
    bool missingItemAllowed() override { return load_.lenient; }
    bool setHeader(IfcParser::ParsedHeader*& parsed) override;
    void addData(int id, IfcParser::PooledName* name, IfcParser::ItemList* items,
                 double position) override;
    void endOfFile() override { endsProperly_ = true; }
    bool exact() const override { return load_.exact; }
    IfcParser::ParseFacts* facts() override { return wantsFacts() ? &facts_ : nullptr; }
    void lostData(int id, IfcParser::PooledName* className) override;

 private:
    /// A record that is to be read again once all are there.
    struct Pending {
        IfcEntity* entity;
        Ref<IfcParser::ItemList> items;
    };

    const RtClass* findClass(IfcParser::PooledName* name);
    void beginRecord(int id);
    void readEntity(IfcEntity& entity, Ref<IfcParser::ItemList> items);
    void runSecondPass();
    void moveToModel(unsigned numValid);
    void dropModel();
    void clearTable();
    void tellRemoved();
    void fillReport();
    bool wantsFacts() const { return load_.exact || report_; }
    bool readStrings(XString& value);
    void fillHeader(const IfcParser::ParsedHeader& parsed);

    std::istream& stream_;
    ErrLog* log_;
    IfcHeader* header_;
    IfcLoadReport* report_;
    LoadContextImp load_;
    IfcInFiler filer_;
    EIfcSchemaId schema_ = eIFC2X3;
    IfcModelPtr model_;
    std::vector<Pending> pending_;
    IfcParser::ParseFacts facts_;
    std::uint64_t numRecords_ = 0;
    bool endsProperly_ = false;
    // The scanner keeps one name per spelling, so the address tells the class.
    std::unordered_map<const IfcParser::PooledName*, const RtClass*> classCache_;
    const IfcParser::PooledName* lastName_ = nullptr;
    const RtClass* lastClass_ = nullptr;
};

}  // namespace Ovik
