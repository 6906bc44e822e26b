// One load: takes the records that the parser finds and makes a model of them. Internal.
#pragma once

#include <iosfwd>
#include <sstream>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ovik/imp/entityid.h"
#include "ovik/imp/ifcmodel.h"
#include "ovik/imp/infiler.h"
#include "ovik/imp/load/entrytable.h"
#include "ovik/imp/rtclass.h"
#include "ovik/imp/xstring.h"
#include "ovik/parser/fileoutput.h"

namespace Ovik {

/// The reader of one file. Until the model is complete, its entities belong to the reader, and the
/// slots of the model lead to them; then those that are valid move to the model's pool, in
/// ascending order of instance number, and the others are deleted.
class IfcReader final : public IfcParser::OutputPrgMeter {
 public:
    /// All but `stream` may be null.
    IfcReader(std::istream& stream, ErrLog* log, ProgressMeter* meter,
              const IfcReadOptions* options, IfcHeader* header);
    ~IfcReader() override;

    /// Runs the load. The model, with a reference for the caller, or null. To be called once.
    IfcModel* load();

    // What the parser calls.
    bool missingItemAllowed() override { return lenient_; }
    bool setHeader(IfcParser::ParsedHeader*& parsed) override;
    void addData(int id, IfcParser::PooledName* name, IfcParser::ItemList* items,
                 double position) override;
    void endOfFile() override {}

    // What the in-filer asks.
    bool lenient() const { return lenient_; }
    bool exact() const { return exact_; }
    bool secondPass() const { return secondPass_; }
    EntityId handle(int number);
    /// True once per load and `code`, and never without a log.
    bool isNewWarning(int code);

 private:
    const RtClass* findClass(IfcParser::PooledName* name);
    void readEntity(IfcEntity& entity, IfcParser::ItemList* items);
    void runSecondPass();
    void moveToModel(unsigned numValid);
    void dropModel();
    void clearTable();
    bool readStrings(XString& value);
    void fillHeader(const IfcParser::ParsedHeader& parsed);

    std::istream& stream_;
    ErrLog* log_;
    IfcHeader* header_;
    bool lenient_;
    bool exact_;
    bool secondPass_ = false;
    EIfcSchemaId schema_ = eIFC2X3;
    IfcModel* model_ = nullptr;  // one reference is the reader's, as long as this is set
    std::wostringstream messages_;
    IfcInFiler filer_;
    EntryTable entries_;
    // Each pair holds a reference to its list.
    std::vector<std::pair<IfcEntity*, IfcParser::ItemList*>> pending_;
    // The scanner keeps one name per spelling, so the address tells the class.
    std::unordered_map<const IfcParser::PooledName*, const RtClass*> classCache_;
    const IfcParser::PooledName* lastName_ = nullptr;
    const RtClass* lastClass_ = nullptr;
};

}  // namespace Ovik
