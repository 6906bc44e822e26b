// What entities, selects, aggregates and enumerations write themselves to.
#pragma once

#include <memory>

#include "ovik/base/export.h"

namespace Ovik {

class Base64Guid;
class IfcEntity;
class Logical;
class XBinary;
class XString;
class IfcOutFilerImp;

/// Builds the records of one writing. Values go to the innermost open scope, separated by commas.
/// One thread, within one write.
class OVIK_API IfcOutFiler {
 public:
    explicit IfcOutFiler(std::unique_ptr<IfcOutFilerImp> imp);
    ~IfcOutFiler();
    IfcOutFiler(const IfcOutFiler&) = delete;
    IfcOutFiler& operator=(const IfcOutFiler&) = delete;

    /// True in a save, which keeps what the model has: what is missing is written as `$` then.
    bool exact() const;

    void writeNull();                         ///< `$`
    void writeDerived();                      ///< `*`
    void writeReference(unsigned number);     ///< `#12`, or `$` for 0
    void writeEnum(const char* text);         ///< `.TEXT.`
    void writeBool(bool value);               ///< `.T.` or `.F.`
    void writeLogical(const Logical& value);  ///< `.T.`, `.F.` or `.U.`
    void writeInt(int value);                 ///< decimal
    void writeUnsigned(unsigned value);       ///< decimal
    /// `2.` when integral, else 16 significant digits. In a save the fewest digits that read back
    /// the same; infinities and what is no number make it fail.
    void writeReal(double value);
    /// The encoded text in apostrophes; an unset one is `''`, and `$` in a save. Nor does a save
    /// keep an encoded text that would end before its time: it is made anew from the wide one.
    void writeString(const XString& value);
    /// The 22 characters in apostrophes; an empty one is `''`, and `$` in a save.
    void writeGuid(const Base64Guid& value);
    void writeBinary(const XBinary& value);  ///< the encoded text in quotes
    /// A reference to `entity`; `$` for null, and for one whose `write` writes no record. Where
    /// numbers are given depth first, its record is written first if it isn't yet.
    void writeEntity(const IfcEntity* entity);

    /// A parenthesised thing under construction: a list, or with a name a typed value. It closes
    /// at the end of the scope, on an exception too. Stands within a record.
    class Item {
     public:
        explicit Item(IfcOutFiler& out, const char* name = nullptr) : out_(out) {
            out.openItem(name);
        }
        ~Item() { out_.closeItem(); }
        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;

     private:
        IfcOutFiler& out_;
    };

    /// The record of `entity`, with `fields()` writing its attributes; nothing if the entity has
    /// been reached before in this writing, or if a save only asks whether it has a record.
    template <class Fields>
    void writeRecord(const IfcEntity& entity, Fields&& fields) {
        if (!openRecord(entity)) return;
        struct Closing {
            IfcOutFiler& out;
            ~Closing() { out.closeRecord(); }
        } closing{*this};
        fields();
    }

    /// Names the attribute whose value comes next, so that a report can name it, too. `name` is
    /// kept by address.
    void beginAttribute(const char* name) { attribute_ = name; }

 private:
    void openItem(const char* name);
    void closeItem();
    bool openRecord(const IfcEntity& entity);
    void closeRecord();

    std::unique_ptr<IfcOutFilerImp> imp_;
    const char* attribute_ = nullptr;  // of the open record
};

}  // namespace Ovik
