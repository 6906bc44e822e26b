// The result codes of access by name, and the tags of the values it carries.
#pragma once

namespace Ovik {

/// Result of `getAttribute` and `setAttribute`.
enum Result {
    ResultOk = 0,         ///< done
    ResultNotFound = 1,   ///< no attribute of that name, or no such literal of an enumeration
    ResultUnset = 2,      ///< the attribute exists and has no value
    ResultWrongType = 3,  ///< the variant doesn't fit the attribute
};

/// Tag of an `IfcVariant`.
enum AttributeTypeEnum {
    AttributeInt = 0,
    AttributeUnsigned = 1,
    AttributeDouble = 2,
    AttributeBool = 3,
    AttributeString = 4,
    AttributeLogical = 5,
    AttributeEntity = 6,
    AttributeGuid = 7,
    AttributeBinary = 8,
    AttributeEnum = 9,     ///< the text of an enumerator
    AttributeSelect = 10,  ///< a class derived from `IfcSelectValueBase`
    AttributeVector = 11,  ///< a class derived from `IfcVectorValueBase`
    AttributeNone = 12,    ///< no value
};

}  // namespace Ovik
