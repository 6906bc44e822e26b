// Construction and copying of the header strings, and their setters.
#include "ovik/imp/ifcheader.h"

#include <cstddef>
#include <utility>

#include "ovik/imp/headerparameters.h"

namespace Ovik {
namespace {

// A field has been set: it no longer has the parameter that stands at `position` in the file.
void forget(std::shared_ptr<const HeaderParameters>& parameters,
            std::vector<std::string> HeaderParameters::*statement, std::size_t position) {
    if (!parameters) return;
    // Copies of the header share the parameters.
    HeaderParameters changed = *parameters;
    std::vector<std::string>& texts = changed.*statement;
    if (position >= texts.size()) texts.resize(position + 1);
    texts[position].clear();
    parameters = std::make_shared<HeaderParameters>(std::move(changed));
}

}  // namespace

IfcHeader::IfcHeader() : implementationLevel_(u"2;1") {}
IfcHeader::IfcHeader(const IfcHeader& other) = default;
IfcHeader& IfcHeader::operator=(const IfcHeader& other) = default;
IfcHeader::~IfcHeader() = default;

void IfcHeader::setFileDescription(const XString& value) {
    fileDescription_ = value;
    forget(parameters_, &HeaderParameters::fileDescription, 0);
}
void IfcHeader::setFileName(const XString& value) {
    fileName_ = value;
    forget(parameters_, &HeaderParameters::fileName, 0);
}
void IfcHeader::setTimeStamp(const XString& value) {
    timeStamp_ = value;
    forget(parameters_, &HeaderParameters::fileName, 1);
}
void IfcHeader::setAuthor(const XString& value) {
    author_ = value;
    forget(parameters_, &HeaderParameters::fileName, 2);
}
void IfcHeader::setOrganization(const XString& value) {
    organization_ = value;
    forget(parameters_, &HeaderParameters::fileName, 3);
}
void IfcHeader::setPreprocessorVersion(const XString& value) {
    preprocessorVersion_ = value;
    forget(parameters_, &HeaderParameters::fileName, 4);
}
void IfcHeader::setOriginatingSystem(const XString& value) {
    originatingSystem_ = value;
    forget(parameters_, &HeaderParameters::fileName, 5);
}
void IfcHeader::setAuthorization(const XString& value) {
    authorization_ = value;
    forget(parameters_, &HeaderParameters::fileName, 6);
}

}  // namespace Ovik
