// The model: the container of all entities of one building-information file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <system_error>

#include "ovik/base/export.h"
#include "ovik/imp/readoptions.h"
#include "ovik/imp/schemaid.h"

namespace Ovik {

class ErrLog;
class IfcEntity;
class IfcHeader;
class ProgressMeter;
struct IfcLoadReport;
struct IfcSaveOptions;
struct IfcSaveReport;
struct ModelImp;

/// A sequence of entities of one schema, and the owner of them and of the slots that their handles
/// lead to. Entities are found by position, by following references, or by a walk with `isKindOf`;
/// none is ever taken out. Counted by reference: who gets a model from `create` or `read` owns one
/// reference and gives it back with `release`, or leaves that to an `IfcModelPtr`. One thread at a
/// time; the count is plain.
class OVIK_API IfcModel {
 public:
    IfcModel(const IfcModel&) = delete;  // entities can't be copied, and handles lead to one model
    IfcModel& operator=(const IfcModel&) = delete;

    /// Takes one more reference.
    virtual void addRef() = 0;
    /// Gives back a reference. The last one destroys the model with all its entities.
    virtual void release() = 0;

    virtual std::uint64_t getNumEntities() const = 0;
    /// The entity at `index`, which is not checked. The model keeps owning it.
    virtual IfcEntity* get(std::uint64_t index) const = 0;
    /// Makes room for `count` entities, and for as many more as there are already. Does nothing if
    /// there are `count` already. The number of entities stays.
    virtual void reserve(std::uint64_t count) = 0;
    virtual EIfcSchemaId schemaId() const = 0;

    /// Adds relations to the back references of what they relate, and sets the `userData` of every
    /// entity to 0. Adds them again at each call. Collected are: styled items and layers; what
    /// voids, fills, aggregates and contains; materials, classifications, properties and types of
    /// objects; assignments to products; representations of materials; maps of product types; and
    /// in IFC4 indexed colours and textures. Nothing else does this: not loading, not setting.
    virtual void buildBackRefs() = 0;

 protected:
    explicit IfcModel(std::unique_ptr<ModelImp> imp);
    virtual ~IfcModel();

    ModelImp* imp() const { return imp_.get(); }

 public:
    /// A new empty model; null for an unknown schema. With `makeGuids` every new entity with a
    /// `GlobalId` gets a new one, or the fixed `Base64Guid::testGuid` if `useTestGuid` is true too.
    static IfcModel* create(EIfcSchemaId schema, bool makeGuids, bool useTestGuid);

    /// A new model from a STEP physical file, with one reference for the caller. Null if the file
    /// can't be opened, ends or breaks in its header, or has another schema than IFC2X3 and IFC4;
    /// only the last two are logged. Whatever else is wrong costs the records it stands in, those
    /// that can't be without them, and so on: a record goes if an attribute can't be read, or if a
    /// mandatory reference leads nowhere, to a wrong class or to a record that goes. What goes has
    /// lines in `log`. An apostrophe that is missing makes a string of what follows, up to the next
    /// one. The entities are in ascending order of their instance numbers. All arguments but `path`
    /// may be null: no log, no progress, lenient, header not wanted. Two files must not be read at
    /// the same time in a process.
    /// With `report` what became of the file is told as data too, which changes nothing else.
    /// An exact load, see `IfcReadOptions`, removes no record for another's sake, and names what is
    /// not kept by a line "line 7: #12 IFCWALL.Name: cause" in `log`, in the order of the file.
    /// A stream that breaks while it is read, by an error of the device, gives null with a line in
    /// `log` in an exact load or with `report`. In any other it ends the process with a line on
    /// standard error and status 2. So does memory that runs out for a single token.
    /// A wide path is encoded as UTF-8 where paths are bytes; the same holds for `write`.
    static IfcModel* read(const wchar_t* path, ErrLog* log = nullptr,
                          ProgressMeter* meter = nullptr, const IfcReadOptions* options = nullptr,
                          IfcHeader* header = nullptr, IfcLoadReport* report = nullptr);
    static IfcModel* read(const std::filesystem::path& path, ErrLog* log = nullptr,
                          ProgressMeter* meter = nullptr, const IfcReadOptions* options = nullptr,
                          IfcHeader* header = nullptr, IfcLoadReport* report = nullptr);

    /// Writes the model to a STEP physical file, which is overwritten. False if the file can't be
    /// opened; failures after that are not told. The instances are numbered anew from 1, depth
    /// first in the order of the model. An unset time stamp of `header` gives the local time of
    /// now; its implementation level and schema are not used.
    /// Meant for models whose values obey the schema, as a plain load leaves them. Of one that was
    /// loaded exactly it loses what only an exact load keeps: reals get 16 digits and lose tiny
    /// fractions, what was not given is written as its default or as `''`, the header has no lists
    /// of several texts, numbers are new, and an empty model gets a record `#1= ()`. `save` keeps
    /// all of that.
    bool write(const wchar_t* path, const IfcHeader& header) const;
    bool write(const std::filesystem::path& path, const IfcHeader& header) const;

    /// Saves the model as a STEP physical file: all of it as it is, or nothing. Reals are written
    /// with the fewest digits that read back the same, what was not given and strings that are
    /// unset as `$`, and entities with the instance numbers that they had in their file, records
    /// in ascending order. The header of an exact load gives back the parameters of its file but
    /// for the fields that have been set since; the schema is that of the model.
    /// The text goes to a new file, which takes the place of the one at `path` when it is whole
    /// and on the disk: whatever fails before leaves the old file as it is. A link is followed, and
    /// permissions stay. Only what is no regular file, and what stands under `/dev` or `/proc`, is
    /// written straight.
    /// An error is that of the file system; `argument_out_of_domain` if a real is infinite or not a
    /// number; `value_too_large` if there are no numbers left. `options` may be null, and so may
    /// `meter`, which is told of entities, and `report`. What the meter throws ends the save.
    std::error_code save(const wchar_t* path, const IfcHeader& header,
                         const IfcSaveOptions* options = nullptr, ProgressMeter* meter = nullptr,
                         IfcSaveReport* report = nullptr) const;
    std::error_code save(const std::filesystem::path& path, const IfcHeader& header,
                         const IfcSaveOptions* options = nullptr, ProgressMeter* meter = nullptr,
                         IfcSaveReport* report = nullptr) const;

 private:
    friend class IfcEntity;
    friend class IfcReader;

    std::unique_ptr<ModelImp> imp_;
};

/// Gives a model's reference back.
struct ReleaseModel {
    void operator()(IfcModel* model) const { model->release(); }
};
/// Owns one reference to a model: `IfcModelPtr model(IfcModel::read(path));`
using IfcModelPtr = std::unique_ptr<IfcModel, ReleaseModel>;

}  // namespace Ovik
