// The fields of a physical file's header section.
#pragma once

#include <memory>

#include "ovik/base/export.h"
#include "ovik/imp/xstring.h"

namespace Ovik {

struct HeaderParameters;

/// The ten header strings. All are unset in a new header but the implementation level, "2;1", which
/// can't be set. A plain value: copied field by field, and moving copies too.
/// The header of an exact load also keeps what the strings can't hold, as the names of several
/// authors: `IfcModel::save` gives back the parameters of the file but for the fields that have
/// been set since.
class OVIK_API IfcHeader {
 public:
    IfcHeader();
    IfcHeader(const IfcHeader& other);
    IfcHeader& operator=(const IfcHeader& other);
    ~IfcHeader();

    /// FILE_DESCRIPTION, description.
    const XString& fileDescription() const { return fileDescription_; }
    void setFileDescription(const XString& value);
    /// FILE_DESCRIPTION, implementation_level.
    const XString& implementationLevel() const { return implementationLevel_; }
    /// FILE_NAME, name.
    const XString& fileName() const { return fileName_; }
    void setFileName(const XString& value);
    /// FILE_NAME, time_stamp.
    const XString& timeStamp() const { return timeStamp_; }
    void setTimeStamp(const XString& value);
    /// FILE_NAME, author.
    const XString& author() const { return author_; }
    void setAuthor(const XString& value);
    /// FILE_NAME, organization.
    const XString& organization() const { return organization_; }
    void setOrganization(const XString& value);
    /// FILE_NAME, preprocessor_version.
    const XString& preprocessorVersion() const { return preprocessorVersion_; }
    void setPreprocessorVersion(const XString& value);
    /// FILE_NAME, originating_system.
    const XString& originatingSystem() const { return originatingSystem_; }
    void setOriginatingSystem(const XString& value);
    /// FILE_NAME, authorization.
    const XString& authorization() const { return authorization_; }
    void setAuthorization(const XString& value);
    /// FILE_SCHEMA.
    const XString& fileSchema() const { return fileSchema_; }
    void setFileSchema(const XString& value) { fileSchema_ = value; }

 private:
    friend struct HeaderParameters;

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
    std::shared_ptr<const HeaderParameters> parameters_;  // null unless exactly loaded
};

}  // namespace Ovik
