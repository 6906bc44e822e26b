// The facade's models, entities and headers: forwards to those of the library.
#include "ovik/api/model.h"

#include "ovik/api/access.h"
#include "ovik/api/desctables.h"
#include "ovik/base/unicode.h"
#include "ovik/imp/ifcheader.h"
#include "ovik/imp/rtclass.h"

namespace Ovik::IfcApi {

template class Handle<Entity::Impl>;
template class Handle<IfcHeader>;

// -- Entity -------------------------------------------------------------------------------------

const Entity Entity::s_null;

Entity::Entity() : Entity(new Impl(EntityId())) {}

Entity::Entity(Impl* inner) : inner_(inner) {}

Entity Entity::create(Model& model, const EntityDesc& desc) {
    const RtClass* cls = Access::classOf(desc);
    const IfcEntity* entity = cls ? cls->create(Access::inner(model).data()) : nullptr;
    return entity ? Impl::create(entity->id()) : Entity();
}

int Entity::ifcId() const {
    return Impl::data(*this)()->ifcId();
}

bool Entity::isNull() const {
    return Impl::data(*this).isNull();
}

Result Entity::getAttribute(const char* name, Variant& value) const {
    IfcVariant found;
    const Ovik::Result result = Impl::data(*this)()->getAttribute(name, found);
    if (result == Ovik::ResultOk) Access::inner(value) = std::move(found);
    return translate(result);
}

Result Entity::setAttribute(const char* name, const Variant& value) {
    return translate(Impl::data(*this)()->setAttribute(name, Access::inner(value)));
}

const EntityDesc* Entity::isA() const {
    const IfcEntity& entity = *Impl::data(*this)();
    return findEntityDesc(entity.schemaId(), entity.isA());
}

bool Entity::isKindOf(const EntityDesc& desc) const {
    return Impl::data(*this)()->isKindOf(Access::classOf(desc));
}

const char* Entity::className() const {
    return Impl::data(*this)()->isA()->className();
}

std::vector<const char*> Entity::attributeNames() const {
    std::vector<const RtClass*> chain;
    for (auto* cls = Impl::data(*this)()->isA(); cls; cls = cls->parent()) chain.push_back(cls);
    std::vector<const char*> names;
    for (auto cls = chain.rbegin(); cls != chain.rend(); ++cls) {
        if (!(*cls)->attributes()) continue;
        for (const auto& attribute : (*cls)->attributes()->attributes) {
            names.push_back(attribute.name);
        }
    }
    return names;
}

std::vector<Entity> Entity::getInverseRefs() const {
    const IfcEntityPtrArray& refs = Impl::data(*this)()->backRefs();
    std::vector<Entity> entities;
    entities.reserve(refs.size());
    for (unsigned i = 0; i < refs.size(); ++i) entities.push_back(Impl::create(refs[i]->id()));
    return entities;
}

// -- Header -------------------------------------------------------------------------------------

Header::Header() : inner_(new IfcHeader) {}

String Header::fileDescription() const {
    return inner_->fileDescription().c_str();
}
void Header::setFileDescription(const String& value) {
    inner_->setFileDescription(value.c_str());
}

String Header::implementationLevel() const {
    return inner_->implementationLevel().c_str();
}

String Header::fileName() const {
    return inner_->fileName().c_str();
}
void Header::setFileName(const String& value) {
    inner_->setFileName(value.c_str());
}

String Header::timeStamp() const {
    return inner_->timeStamp().c_str();
}
void Header::setTimeStamp(const String& value) {
    inner_->setTimeStamp(value.c_str());
}

String Header::author() const {
    return inner_->author().c_str();
}
void Header::setAuthor(const String& value) {
    inner_->setAuthor(value.c_str());
}

String Header::organization() const {
    return inner_->organization().c_str();
}
void Header::setOrganization(const String& value) {
    inner_->setOrganization(value.c_str());
}

String Header::preprocessorVersion() const {
    return inner_->preprocessorVersion().c_str();
}
void Header::setPreprocessorVersion(const String& value) {
    inner_->setPreprocessorVersion(value.c_str());
}

String Header::originatingSystem() const {
    return inner_->originatingSystem().c_str();
}
void Header::setOriginatingSystem(const String& value) {
    inner_->setOriginatingSystem(value.c_str());
}

String Header::authorization() const {
    return inner_->authorization().c_str();
}
void Header::setAuthorization(const String& value) {
    inner_->setAuthorization(value.c_str());
}

String Header::fileSchema() const {
    return inner_->fileSchema().c_str();
}
void Header::setFileSchema(const String& value) {
    inner_->setFileSchema(value.c_str());
}

// -- Model --------------------------------------------------------------------------------------

Model::Model(Impl* inner) : inner_(inner) {}

Model* Model::create(EIfcSchemaId schema) {
    return Impl::create(IfcModel::create(schema, true, false));
}

Model* Model::read(const wchar_t* path, Header* header) {
    return read(path, header, nullptr);
}

Model* Model::read(const std::filesystem::path& path, Header* header) {
    return read(path, header, nullptr);
}

Model* Model::read(const wchar_t* path, Header* header, const IfcReadOptions* options,
                   IfcLoadReport* report, ErrLog* log) {
    return read(pathFromWide(path), header, options, report, log);
}

Model* Model::read(const std::filesystem::path& path, Header* header, const IfcReadOptions* options,
                   IfcLoadReport* report, ErrLog* log) {
    return Impl::create(
        IfcModel::read(path, log, nullptr, options, &Access::inner(*header), report));
}

bool Model::write(const wchar_t* path, const Header& header) {
    return write(pathFromWide(path), header);
}

bool Model::write(const std::filesystem::path& path, const Header& header) {
    return inner_->data()->write(path, Access::inner(header));
}

std::error_code Model::save(const wchar_t* path, const Header& header,
                            const IfcSaveOptions* options, ProgressMeter* meter,
                            IfcSaveReport* report) const {
    return save(pathFromWide(path), header, options, meter, report);
}

std::error_code Model::save(const std::filesystem::path& path, const Header& header,
                            const IfcSaveOptions* options, ProgressMeter* meter,
                            IfcSaveReport* report) const {
    return inner_->data()->save(path, Access::inner(header), options, meter, report);
}

bool Model::isNull() const {
    return !inner_->data();
}

EIfcSchemaId Model::schemaId() const {
    return inner_->data()->schemaId();
}

std::size_t Model::getNumEntities() const {
    return inner_->data()->getNumEntities();
}

Entity Model::get(std::size_t index) const {
    return Entity::Impl::create(inner_->data()->get(index)->id());
}

}  // namespace Ovik::IfcApi
