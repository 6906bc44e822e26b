// Construction and copying of the header strings.
#include "ovik/imp/ifcheader.h"

namespace Ovik {

IfcHeader::IfcHeader() : implementationLevel_(u"2;1") {}
IfcHeader::IfcHeader(const IfcHeader& other) = default;
IfcHeader& IfcHeader::operator=(const IfcHeader& other) = default;
IfcHeader::~IfcHeader() = default;

}  // namespace Ovik
