// The state of one writing: the numbers given out and the text of the data section. Internal.
//
// Records nest on the way: a record that is reached from within another is built before the other
// goes on, and yet follows it in the file. So text is built at the end of one buffer, as on a
// stack. A nested record that is complete leaves the buffer for the store of its group; when the
// outermost record of the group is complete, the group goes to the data section in order.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace Ovik {

class IfcEntity;
class IfcHeader;
class IfcModel;

/// The instance numbers of one writing: a hash table with open addressing.
class EntityNumbers {
 public:
    /// Makes room for `count` entities.
    explicit EntityNumbers(std::size_t count);

    /// The number of `entity`; 0 if it has none yet.
    unsigned find(const IfcEntity* entity) const { return places_[place(entity)].number; }
    /// Gives `entity` the next number, from 1 on. False if it has one already.
    bool add(const IfcEntity* entity);
    /// How many entities have a number, which is the last number given.
    unsigned size() const { return size_; }

 private:
    struct Place {
        const IfcEntity* entity = nullptr;
        unsigned number = 0;
    };

    /// Where `entity` is, or would go.
    std::size_t place(const IfcEntity* entity) const;
    void grow();

    std::vector<Place> places_;  // a power of two of them, at most two thirds in use
    unsigned shift_ = 0;         // what leaves an index of a 64-bit hash
    unsigned size_ = 0;
};

class IfcOutFilerImp {
 public:
    /// The filer of a model of `numEntities` entities.
    explicit IfcOutFilerImp(std::size_t numEntities);

    /// The text that the next value is appended to, after a comma if it needs one.
    std::string& nextValue() {
        if (numItems_++ != 0) text_ += ',';
        return text_;
    }

    void openItem(const char* name);
    void closeItem();
    bool openRecord(const IfcEntity& entity);
    void closeRecord();

    unsigned numberOf(const IfcEntity* entity) const { return numbers_.find(entity); }
    bool isAnyNumbered() const { return numbers_.size() != 0; }

    /// The data section so far. Complete when no record is open.
    const std::string& data();

 private:
    struct OpenRecord {
        std::size_t begin;  // in `text_`
        unsigned number;
    };
    struct Stored {
        std::size_t begin;  // in `store_`
        std::size_t size;
    };

    std::string text_;                  // what is open now
    unsigned numItems_ = 0;             // values in the innermost open scope
    std::vector<unsigned> outerItems_;  // the same of the scopes around it
    std::vector<OpenRecord> records_;
    // The nested records of a group: texts as they were completed, and where to find them by
    // number, which runs without gaps from that of the outermost record on.
    std::string store_;
    std::vector<Stored> stored_;
    std::string data_;
    EntityNumbers numbers_;
};

/// Appends `value` as `writeReal` of the filer writes it.
void appendReal(std::string& text, double value);

/// Writes the whole file.
void writeModel(std::ostream& out, const IfcModel& model, const IfcHeader& header);

}  // namespace Ovik
