#include "ovik/api.h"
#include "ovik/api/ifc4.h"

using namespace Ovik::IfcApi;

int main() {
    initOvikApi();  // once, before any constant is used
    Header header;
    Model* model = Model::read(std::filesystem::path("wall.ifc"), &header);
    if (!model->isNull()) {
        for (std::size_t i = 0; i < model->getNumEntities(); ++i) {
            Entity entity = model->get(i);
            if (entity.isKindOf(Ifc4::IfcWall))
                entity.setAttribute(Ifc4::Description, String(u"2\u00bd m high"));
        }
        model->write(std::filesystem::path("changed.ifc"), header);
    }
    model->release();
}
