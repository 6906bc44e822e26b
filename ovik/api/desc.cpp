// Descriptors: filling them, and the way back from a class to its descriptor.
#include "ovik/api/desc.h"

#include <algorithm>

#include "ovik/api/access.h"
#include "ovik/api/desctables.h"
#include "ovik/base/ascii.h"
#include "ovik/imp/rtclass.h"

namespace Ovik::IfcApi {
namespace {

void fill(std::span<const EntityRow> rows) {
    for (const EntityRow& row : rows) Access::block(*row.desc).cls = row.cls;
}

void fill(std::span<const VectorRow> rows) {
    for (const VectorRow& row : rows) Access::block(*row.desc).create = row.create;
}

void fill(std::span<const SelectorRow> rows) {
    for (const SelectorRow& row : rows) {
        Access::block(*row.desc).create = row.create;
        Access::block(*row.desc).name = row.name;
    }
}

const EntityDesc* find(const DescTables& tables, const RtClass* cls) {
    const unsigned hash = (*tables.hash)(cls->className());
    const auto row =
        std::lower_bound(tables.entities.begin(), tables.entities.end(), hash,
                         [](const EntityRow& r, unsigned value) { return r.hash < value; });
    if (row == tables.entities.end() || row->hash != hash) return nullptr;
    if (compareNoCase(row->name, cls->className()) != 0) return nullptr;
    return Access::block(*row->desc).cls == cls ? row->desc : nullptr;
}

}  // namespace

EntityDesc::EntityDesc() : impl_(std::make_shared<Impl>()) {}

EntityDesc::operator const char*() const {
    return impl_->cls ? impl_->cls->className() : nullptr;
}

bool EntityDesc::operator==(const EntityDesc& other) const {
    return impl_->cls == other.impl_->cls;
}

SelectorDesc::SelectorDesc() : impl_(std::make_shared<Impl>()) {}

SelectorDesc::operator const char*() const {
    return impl_->name;
}

VectorDesc::VectorDesc() : impl_(std::make_shared<Impl>()) {}

void initOvikApi() {
    fill(Ifc2x3::descTables.entities);
    fill(Ifc4::descTables.entities);
    fill(Ifc2x3::descTables.vectors);
    fill(Ifc4::descTables.vectors);
    fill(Ifc2x3::descTables.selectors);
    fill(Ifc4::descTables.selectors);
}

const EntityDesc* Ifc2x3::findEntityDesc(const RtClass* cls) {
    return find(descTables, cls);
}

const EntityDesc* Ifc4::findEntityDesc(const RtClass* cls) {
    return find(descTables, cls);
}

}  // namespace Ovik::IfcApi
