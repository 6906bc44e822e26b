// Models, their entities and the headers of their files, as the facade shows them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

#include "ovik/api/desc.h"
#include "ovik/api/values.h"
#include "ovik/base/progressmeter.h"
#include "ovik/imp/loadreport.h"
#include "ovik/imp/readoptions.h"
#include "ovik/imp/savereport.h"
#include "ovik/imp/schemaid.h"

namespace Ovik {
class ErrLog;
}

namespace Ovik::IfcApi {

class Model;

/// A reference to an entity of a model; valid as long as the model is. Only `isNull` may be called
/// on a null one.
class OVIK_API Entity {
 public:
    class Impl;

    /// A null reference.
    static const Entity s_null;
    Entity();

    /// A new entity in `model`, which owns it; null for a descriptor of no class.
    static Entity create(Model& model, const EntityDesc& desc);

    /// The instance number in the file; 0 if the entity was made by `create`.
    int ifcId() const;
    bool isNull() const;

    /// The attribute `name` into `value`, which changes only if the result is `ResultOk`.
    /// `ResultUnset` if the entity's own class declares it and it has no value; `ResultNotFound` if
    /// there is no such attribute, or if it is inherited and has no value: the two can't be told
    /// apart, which is kept for compatibility. A required reference that leads nowhere gives
    /// `ResultOk` and an empty value.
    Result getAttribute(const char* name, Variant& value) const;
    /// Sets the attribute `name`. `ResultNotFound` if there is none, or no such literal;
    /// `ResultWrongType` if `value` doesn't fit, which counts as not found for an inherited
    /// attribute. The entity is then unchanged.
    Result setAttribute(const char* name, const Variant& value);

    /// The name of the entity's class as it stands in a file, in capitals.
    const char* className() const;
    /// The names of its attributes in the order of a record: those of its ancestors come first.
    std::vector<const char*> attributeNames() const;

    /// Null for every entity, for the reason at `findEntityDesc`: test with `isKindOf`.
    const EntityDesc* isA() const;
    /// True if the entity's class is that of `desc` or descends from it.
    bool isKindOf(const EntityDesc& desc) const;

    /// The entities that are in the back references of this one at the moment, in order: none until
    /// those of the model have been built.
    std::vector<Entity> getInverseRefs() const;

 private:
    friend struct Access;
    explicit Entity(Impl* inner);
    Handle<Impl> inner_;
};

/// The header of a file. A getter gives a copy of the text, in which an unset field is a present
/// text without characters.
class OVIK_API Header {
 public:
    /// All fields unset but the implementation level, "2;1".
    Header();

    String fileDescription() const;
    void setFileDescription(const String& value);
    String implementationLevel() const;
    String fileName() const;
    void setFileName(const String& value);
    String timeStamp() const;
    void setTimeStamp(const String& value);
    String author() const;
    void setAuthor(const String& value);
    String organization() const;
    void setOrganization(const String& value);
    String preprocessorVersion() const;
    void setPreprocessorVersion(const String& value);
    String originatingSystem() const;
    void setOriginatingSystem(const String& value);
    String authorization() const;
    void setAuthorization(const String& value);
    String fileSchema() const;
    void setFileSchema(const String& value);

 private:
    friend struct Access;
    Handle<IfcHeader> inner_;
};

/// A model. Whoever gets one from `create` or `read` gives it back with `release`. A load that
/// failed gives a null `Model`, which is no null pointer: only its `isNull` and `release` may be
/// called. One thread at a time; two files must not be read at the same time in a process.
class OVIK_API Model {
 public:
    class Impl;

    /// A new empty model, whose new entities get identifiers. A null one for an unknown schema.
    static Model* create(EIfcSchemaId schema);

    /// The model in a file and, in `*header`, which must be there, its header. What is wrong in the
    /// file is repaired or dropped without a message. A null one if the file can't be opened or its
    /// header is broken or names neither of the two schemas. A wide path is encoded as UTF-8 where
    /// paths are bytes; the same holds for `write`.
    static Model* read(const wchar_t* path, Header* header);
    static Model* read(const std::filesystem::path& path, Header* header);
    /// The same, as `options` ask and with what became of the file in `report`, as `IfcModel::read`
    /// tells, and in `log`. All three may be null.
    static Model* read(const wchar_t* path, Header* header, const IfcReadOptions* options,
                       IfcLoadReport* report = nullptr, ErrLog* log = nullptr);
    static Model* read(const std::filesystem::path& path, Header* header,
                       const IfcReadOptions* options, IfcLoadReport* report = nullptr,
                       ErrLog* log = nullptr);

    /// Writes the model to a file, which is overwritten. False if it can't be opened.
    bool write(const wchar_t* path, const Header& header);
    bool write(const std::filesystem::path& path, const Header& header);

    /// Saves the model as it is, all of it or nothing, as `IfcModel::save` tells. All arguments
    /// but path and header may be null.
    std::error_code save(const wchar_t* path, const Header& header,
                         const IfcSaveOptions* options = nullptr, ProgressMeter* meter = nullptr,
                         IfcSaveReport* report = nullptr) const;
    std::error_code save(const std::filesystem::path& path, const Header& header,
                         const IfcSaveOptions* options = nullptr, ProgressMeter* meter = nullptr,
                         IfcSaveReport* report = nullptr) const;

    /// True for a null `Model`.
    bool isNull() const;

    EIfcSchemaId schemaId() const;
    std::size_t getNumEntities() const;
    /// The entity at `index`, which is not checked. Loaded entities are in ascending order of their
    /// instance numbers.
    Entity get(std::size_t index) const;

    /// Gives the model back and deletes this object; nothing on a null `this`.
    void release();

 private:
    friend struct Access;
    explicit Model(Impl* inner);
    ~Model() = default;
    // An assignment shares the block.
    std::shared_ptr<Impl> inner_;
};

}  // namespace Ovik::IfcApi
