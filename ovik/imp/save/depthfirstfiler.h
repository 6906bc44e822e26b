// The writing that numbers all entities anew, depth first. Internal.
//
// Records nest on the way: a record that is reached from within another is built before the other
// goes on, and yet follows it in the file. So text is built at the end of one buffer, as on a
// stack. A nested record that is complete leaves the buffer for the store of its group; when the
// outermost record of the group is complete, the group goes to the data section in order.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "ovik/imp/save/entitynumbers.h"
#include "ovik/imp/save/outfilerimp.h"
#include "ovik/imp/save/textsink.h"

namespace Ovik {

class DepthFirstFiler final : public IfcOutFilerImp {
 public:
    /// The filer of a model of `numEntities` entities. It writes exactly if there is a `sink`,
    /// which finished records are handed on to; else they stay.
    DepthFirstFiler(std::size_t numEntities, TextSink* sink);

    bool openRecord(const IfcEntity& entity) override;
    void closeRecord() override;
    unsigned numberFor(const IfcEntity& entity, IfcOutFiler& out) override;

    /// The records so far, but for those that have been handed on. Complete when none is open.
    const std::string& data();
    /// Hands on what is left.
    void handOn();

 private:
    struct OpenRecord {
        std::size_t begin;  // in the buffer
        unsigned number;
        bool isFirst;  // in the scope around it
        const IfcEntity* outer;
    };
    struct Stored {
        std::size_t begin;  // in `store_`
        std::size_t size;
    };

    void makeRoom() override;
    std::size_t textSize() const { return static_cast<std::size_t>(at_ - buffer_.get()); }

    TextSink* const sink_;
    std::unique_ptr<char[]> buffer_;  // what is open now
    std::vector<OpenRecord> records_;
    // The nested records of a group: texts as they were completed, and where to find them by
    // number, which runs without gaps from that of the outermost record on.
    std::string store_;
    std::vector<Stored> stored_;
    std::string data_;
    EntityNumbers numbers_;
};

}  // namespace Ovik
