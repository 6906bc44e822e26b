#include "ovik/api.h"
#include "ovik/api/ifc4.h"

namespace api = Ovik::IfcApi;

int main() {
    api::initOvikApi();  // once, before any constant is used
    api::Header header;
    api::Model* model = api::Model::read(std::filesystem::path("wall.ifc"), &header);
    if (!model->isNull()) {
        for (std::size_t i = 0; i < model->getNumEntities(); ++i) {
            api::Entity entity = model->get(i);
            if (entity.isKindOf(api::Ifc4::IfcWall))
                entity.setAttribute(api::Ifc4::Description, api::String(u"2\u00bd m high"));
        }
        model->write(std::filesystem::path("changed.ifc"), header);
    }
    model->release();
}
