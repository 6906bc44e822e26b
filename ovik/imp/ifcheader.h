// The fields of a physical file's header section.
#pragma once

#include "ovik/base/export.h"
#include "ovik/imp/xstring.h"

namespace Ovik {

/// The ten header strings. All are unset in a new header but the implementation level, "2;1", which
/// can't be set. A plain value: copied field by field, and moving copies too.
class OVIK_API IfcHeader {
 public:
    IfcHeader();
    IfcHeader(const IfcHeader& other);
    IfcHeader& operator=(const IfcHeader& other);
    ~IfcHeader();

    /// FILE_DESCRIPTION, description.
    const XString& fileDescription() const { return fileDescription_; }
    void setFileDescription(const XString& value) { fileDescription_ = value; }
    /// FILE_DESCRIPTION, implementation_level.
    const XString& implementationLevel() const { return implementationLevel_; }
    /// FILE_NAME, name.
    const XString& fileName() const { return fileName_; }
    void setFileName(const XString& value) { fileName_ = value; }
    /// FILE_NAME, time_stamp.
    const XString& timeStamp() const { return timeStamp_; }
    void setTimeStamp(const XString& value) { timeStamp_ = value; }
    /// FILE_NAME, author.
    const XString& author() const { return author_; }
    void setAuthor(const XString& value) { author_ = value; }
    /// FILE_NAME, organization.
    const XString& organization() const { return organization_; }
    void setOrganization(const XString& value) { organization_ = value; }
    /// FILE_NAME, preprocessor_version.
    const XString& preprocessorVersion() const { return preprocessorVersion_; }
    void setPreprocessorVersion(const XString& value) { preprocessorVersion_ = value; }
    /// FILE_NAME, originating_system.
    const XString& originatingSystem() const { return originatingSystem_; }
    void setOriginatingSystem(const XString& value) { originatingSystem_ = value; }
    /// FILE_NAME, authorization.
    const XString& authorization() const { return authorization_; }
    void setAuthorization(const XString& value) { authorization_ = value; }
    /// FILE_SCHEMA.
    const XString& fileSchema() const { return fileSchema_; }
    void setFileSchema(const XString& value) { fileSchema_ = value; }

 private:
    XString fileDescription_;
    XString implementationLevel_;
    XString fileName_;
    XString timeStamp_;
    XString author_;
    XString organization_;
    XString preprocessorVersion_;
    XString originatingSystem_;
    XString authorization_;
    XString fileSchema_;
};

}  // namespace Ovik
