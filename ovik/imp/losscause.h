// The words for why something of a file is not kept, in logs and reports.
#pragma once

namespace Ovik::LossCause {

// Values.
inline constexpr const char* kWrongKind = "value of the wrong kind";
inline constexpr const char* kUnknownType = "type that does not belong here";
inline constexpr const char* kNoLiteral = "no such literal";
inline constexpr const char* kOutOfRange = "number out of range";
inline constexpr const char* kBadIdentifier = "identifier that has not 22 characters";
inline constexpr const char* kUnreadableText = "characters that are no value";
inline constexpr const char* kSurplus = "surplus parameters";
inline constexpr const char* kNegative = "negative number";
inline constexpr const char* kMissing = "missing parameter";
inline constexpr const char* kNoValue = "no value";
inline constexpr const char* kDerived = "value of a derived attribute";
inline constexpr const char* kTooFew = "too few elements";
inline constexpr const char* kTooMany = "too many elements";

// References.
inline constexpr const char* kToNothing = "reference to nothing";
inline constexpr const char* kToWrongClass = "reference to an object of the wrong class";
inline constexpr const char* kToRemoved = "reference to a record that is not kept";
inline constexpr const char* kInCircle = "reference in a circle";

// Records. Of an unknown class the name follows.
inline constexpr const char* kBrokenSyntax = "broken syntax";
inline constexpr const char* kUnknownClass = "unknown class ";
inline constexpr const char* kAbstractClass = "abstract class";
inline constexpr const char* kNumberTaken = "number of a record before it";
inline constexpr const char* kImpossibleNumber = "impossible number";
inline constexpr const char* kUnreadable = "values that do not fit";
inline constexpr const char* kInvalid = "not valid";
inline constexpr const char* kOnlyThroughBad = "valid only by way of a record that is not kept";

}  // namespace Ovik::LossCause
