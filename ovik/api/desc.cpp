// Descriptors: what they name, and the way back from a class to its descriptor.
#include "ovik/api/desc.h"

#include <algorithm>
#include <functional>

#include "ovik/api/access.h"
#include "ovik/api/desctables.h"
#include "ovik/base/ascii.h"
#include "ovik/imp/rtclass.h"
#include "ovik/imp/schematable.h"
#include "ovik/schema/common/namehash.h"

namespace Ovik::IfcApi {
namespace {

// The descriptors are constants. That they tell nothing before `initOvikApi` is what programs know,
// and so they find out in any build when they forget to call it.
bool isInitialised = false;

template <class Creator>
auto* create(Creator creator) {
    if (!isInitialised || !creator) throw std::bad_function_call();
    return creator();
}

}  // namespace

const RtClass* Access::classOf(const EntityDesc& desc) {
    return isInitialised ? desc.cls_ : nullptr;
}

IfcSelectValueBase* Access::createValue(const SelectorDesc& desc) {
    return create(desc.create_);
}

IfcVectorValueBase* Access::createValue(const VectorDesc& desc) {
    return create(desc.create_);
}

EntityDesc::operator const char*() const {
    const RtClass* const cls = Access::classOf(*this);
    return cls ? cls->className() : nullptr;
}

bool EntityDesc::operator==(const EntityDesc& other) const {
    return Access::classOf(*this) == Access::classOf(other);
}

SelectorDesc::operator const char*() const {
    return isInitialised && type_ ? type_->name : nullptr;
}

void initOvikApi() {
    isInitialised = true;
}

const EntityDesc* findEntityDesc(EIfcSchemaId schema, const RtClass* cls) {
    const SchemaRow* const row = findSchema(schema);
    if (!row) return nullptr;
    const unsigned hash = (*row->hash)(cls->className());
    const auto rows = row->facade->entities;
    const auto found = std::ranges::lower_bound(rows, hash, {}, &EntityRow::hash);
    if (found == rows.end() || found->hash != hash) return nullptr;
    if (compareNoCase(found->name, cls->className()) != 0) return nullptr;
    return Access::classOf(*found->desc) == cls ? found->desc : nullptr;
}

const EntityDesc* Ifc2x3::findEntityDesc(const RtClass* cls) {
    return IfcApi::findEntityDesc(eIFC2X3, cls);
}

const EntityDesc* Ifc4::findEntityDesc(const RtClass* cls) {
    return IfcApi::findEntityDesc(eIFC4, cls);
}

}  // namespace Ovik::IfcApi
