// The writing that keeps numbers. Internal.
//
// All numbers are given before the first record is written, so a reference is one look at its
// target, nothing nests, and the text goes through one small buffer. A class from outside of the
// library may do what those of the library never do: write no record, several, one within another,
// one of another entity; that is provided for, and costs the others nothing. A record that comes
// before its turn waits; what is written outside of any record is dropped.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ovik/imp/save/keptnumbers.h"
#include "ovik/imp/save/outfilerimp.h"
#include "ovik/imp/save/textsink.h"

namespace Ovik {

class ProgressMeter;

class KeptFiler final : public IfcOutFilerImp {
 public:
    KeptFiler(const KeptNumbers::Pool& pool, TextSink& sink);

    /// Writes all records, `out` being the filer that this one stands behind. Ends early when the
    /// writing has failed. `meter` may be null; it is told how many entities of the pool are done.
    void run(IfcOutFiler& out, ProgressMeter* meter);

    bool openRecord(const IfcEntity& entity) override;
    void closeRecord() override;
    unsigned numberFor(const IfcEntity& entity, IfcOutFiler& out) override;

    /// True if a number was wanted when the highest had been given.
    bool isOutOfNumbers() const { return isOutOfNumbers_; }

 private:
    // What the call of an entity's `write` is for.
    enum class Step {
        Claim,   // to see whether it writes a record of its own
        Number,  // to number the records that it writes
        Write,
    };
    struct OpenRecord {
        const IfcEntity* entity;
        unsigned number;
        std::string* text;  // the record's, if it comes before its turn
        bool isFirst;       // in the scope around it
    };

    void giveNumbers(IfcOutFiler& out);
    unsigned give(const IfcEntity& entity);
    void writeTurn(const IfcEntity& entity, unsigned number, IfcOutFiler& out);
    void writeWaiting();
    void handOn();
    void makeRoom() override { handOn(); }
    bool isBroken() const { return hasFailed() || isOutOfNumbers_ || sink_.isBroken(); }

    const KeptNumbers::Pool& pool_;
    TextSink& sink_;
    KeptNumbers numbers_;
    const std::unique_ptr<char[]> buffer_;
    char* kept_;                   // with no record open, what stands behind this is dropped
    std::string* text_ = nullptr;  // where the buffer goes to; null: to the sink

    Step step_ = Step::Claim;
    const IfcEntity* wanted_ = nullptr;  // whose claim is tried, or whose turn it is
    bool isWantedMet_ = false;
    unsigned turn_ = 0;  // all records below this number have been written
    std::vector<OpenRecord> records_;
    std::map<unsigned, std::string> waiting_;  // records before their turn, by number
    // What is not in the pool and writes records that have been referred to.
    std::vector<const IfcEntity*> reached_;
    bool isOutOfNumbers_ = false;
};

}  // namespace Ovik
