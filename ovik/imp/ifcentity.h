// The base of all schema entities, and the array that holds an entity's back references.
#pragma once

#include <cstdint>

#include "ovik/base/export.h"
#include "ovik/imp/entityid.h"
#include "ovik/imp/result.h"
#include "ovik/imp/rtclass.h"

namespace Ovik {

class Base64Guid;
class IfcInFiler;
class IfcModel;
class IfcOutFiler;
class IfcVariant;
class ValidationContext;
struct ModelImp;
namespace Schema {
struct Internals;
}

/// A growable array of entity pointers. It owns its buffer and not the entities. Every entity has
/// one and few use it, so an empty one is a null pointer: size and capacity stand in the buffer.
class OVIK_API IfcEntityPtrArray {
 public:
    /// An empty array; the buffer, for 4 elements, comes with the first `add`.
    IfcEntityPtrArray() = default;
    IfcEntityPtrArray(const IfcEntityPtrArray& other);
    IfcEntityPtrArray& operator=(const IfcEntityPtrArray& other);
    ~IfcEntityPtrArray();

    unsigned size() const { return buffer_ ? buffer_->size : 0; }

    /// The element at `index`, which is not checked.
    IfcEntity* const& operator[](unsigned index) const { return buffer_->elements()[index]; }
    IfcEntity*& operator[](unsigned index) { return buffer_->elements()[index]; }

    /// Appends `entity`, doubling the capacity when it is used up. Duplicates are kept.
    void add(IfcEntity* entity);

 private:
    friend struct IfcEntityPtrArrayTest;

    struct alignas(IfcEntity*) Buffer {
        unsigned size;
        unsigned capacity;

        /// The elements stand behind.
        IfcEntity** elements() { return reinterpret_cast<IfcEntity**>(this + 1); }
    };

    bool remove(unsigned index);
    /// A copy of the first elements of `source`, which may be null, with room for `capacity`.
    static Buffer* copyOf(Buffer* source, unsigned capacity);

    Buffer* buffer_ = nullptr;
};

/// What every entity of both schemas has. Entities belong to a model's pool, are referred to by
/// handle, and know nothing of the model but their slot. Not thread-safe.
class OVIK_API IfcEntity {
 public:
    IfcEntity() = default;
    /// A copy has the source's handle, so its `id` still leads to the source.
    IfcEntity(const IfcEntity&) = default;
    IfcEntity& operator=(const IfcEntity&) = default;

    /// The run-time class of this entity.
    virtual const RtClass* isA() const;
    virtual EIfcSchemaId schemaId() const = 0;

    /// Reads the attributes from the record that `in` stands on. False when one can't be read; the
    /// entity is then partly filled. May throw `SelectorNeedSecondPassRead`.
    virtual bool read(IfcInFiler& in) = 0;

 protected:
    /// Validates and repairs the references of this entity: 1 valid, 0 invalid, 2 not loaded.
    virtual int validate(ValidationContext& context) = 0;

 public:
    /// Writes this entity's record, once per writing.
    virtual void write(IfcOutFiler& out) const;

    /// The attribute `name` into `value`, which must be empty. `ResultNotFound` if the class has no
    /// such attribute, `ResultUnset` if an optional one of the nearest class that declares
    /// attributes has no value; of an attribute from further up that is not found either.
    virtual Result getAttribute(const char* name, IfcVariant& value) const;

    /// Sets the attribute `name`. `ResultNotFound` if there is none, or no such literal of its
    /// enumeration; `ResultWrongType` if `value` doesn't fit an attribute of the nearest class that
    /// declares attributes, and `ResultNotFound` for one from further up. The entity is then
    /// unchanged.
    virtual Result setAttribute(const char* name, const IfcVariant& value);

    /// True if the attribute `name` has a value: a mandatory one always, unless an exact load found
    /// none in the file and none has been set since, when it has the value of a new entity; an
    /// optional one as its `hasX` says. False if there is no such attribute.
    bool isGiven(const char* name) const;

    /// The instance number that the entity had in its file; 0 if it was made by `create`.
    int ifcId() const { return ifcId_; }
    /// The handle of this entity; null until it has a slot.
    const EntityId& id() const { return id_; }

    /// Entities that refer to this one, as far as `IfcModel::buildBackRefs` has filled them.
    const IfcEntityPtrArray& backRefs() const { return backRefs_; }
    IfcEntityPtrArray& backRefs() { return backRefs_; }

    /// A free word for the caller; 0 in a new entity.
    int userData() const { return userData_; }
    void setUserData(int value) { userData_ = value; }

    /// True if this entity's class is `cls` or descends from it; false for null. The chain of a
    /// concrete class without a supertype ends at itself, so `IfcEntity::desc()` is not in it.
    bool isKindOf(const RtClass* cls) const { return cls && Ovik::isKindOf(isA(), cls); }

    /// Deletes the entity, or does nothing on a null `this`. Pool and slot are not told, so this is
    /// for an entity that is in no pool.
    void destroy();

    static constexpr RtClass* desc() { return &s_type; }

 protected:
    /// The slots of a model go before its entities: a destructor must not follow a handle.
    virtual ~IfcEntity();

    // The mark of the attribute at `position` of a record: set if an optional one has a value, or
    // if a mandatory one is not given. That an optional reference has one it tells itself.
    bool isMarked(unsigned position) const { return marks_ >> position & 1; }
    void mark(unsigned position) { marks_ |= 1u << position; }
    void unmark(unsigned position) { marks_ &= ~(1u << position); }

    void setIfcId(int id) { ifcId_ = id; }
    void setId(const EntityId& id) { id_ = id; }

    /// Appends the entity to the model's pool and gives it a slot, as far as the model is set to.
    void addToModel(IfcModel& model);
    /// Fills `guid` if the model is set to make identifiers.
    static void makeGuid(IfcModel& model, Base64Guid& guid);
    static ModelImp* imp(IfcModel& model);

 private:
    friend class IfcReader;
    friend class ValidationContextImp;
    friend struct Schema::Internals;
    template <class T>
    friend class IfcEntityPool;
    friend struct ModelImp;

    static RtClass s_type;

    int ifcId_ = 0;
    int userData_ = 0;
    EntityId id_;
    IfcEntityPtrArray backRefs_;
    std::uint32_t marks_ = 0;
};

}  // namespace Ovik
