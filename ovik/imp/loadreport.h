// What became of a file that was loaded, as data for programs. The log tells the same to people.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "ovik/base/export.h"

namespace Ovik {

/// Filled by `IfcModel::read` for who asks. All texts are UTF-8. A report is a plain value: it can
/// be kept, copied and used for the next load, which sets all of it but `maxEntries` anew.
struct OVIK_API IfcLoadReport {
    /// Why there is no model.
    enum class NoModel {
        None,           ///< there is one
        CannotOpen,     ///< no such file, no permission, a folder
        BrokenHeader,   ///< no STEP physical file, or it ends or breaks in its header
        UnknownSchema,  ///< a schema that the library does not know: see `schema`
        BrokenStream,   ///< the file can't be read any further
    };

    /// Why a record is not in the model.
    enum RecordCause {
        UnknownClass,      ///< no class of the schema has this name
        AbstractClass,     ///< objects of this class can't be
        NumberTaken,       ///< another record before it has the number
        ImpossibleNumber,  ///< 0, or beyond 32 bits
        BrokenSyntax,      ///< the text can't be cut into parameters
        Unreadable,        ///< plain loads: an attribute could not be read
        Invalid,           ///< plain loads: a mandatory reference leads nowhere, to a wrong class,
                           ///< or to an entity that is itself removed
        NumRecordCauses
    };

    /// One thing that was not kept.
    struct Loss {
        std::uint64_t line = 0;  ///< where the record begins, from 1
        int number = 0;          ///< of the instance; 0 if that can't be told
        std::string className;   ///< in capitals; empty if it can't be told
        std::string attribute;   ///< as in the schema, "Coordinates[3]" for an element; empty for a
                                 ///< whole record
        std::string cause;       ///< in plain English
    };

    /// How many losses are kept as data. Set by the caller.
    std::size_t maxEntries = 100;

    NoModel noModel = NoModel::None;
    std::uint64_t headerLine = 0;    ///< where a broken header breaks, from 1; else 0
    std::uint64_t headerColumn = 0;  ///< the same
    std::string schema;              ///< the schema's name as in the file; empty without a header

    std::uint64_t recordsSeen = 0;  ///< all that begin with a number, good or bad
    std::uint64_t recordsKept = 0;  ///< entities of the model
    std::uint64_t recordsLost[NumRecordCauses] = {};
    std::uint64_t attributesNotKept = 0;
    std::uint64_t elementsNotKept = 0;  ///< of lists
    std::uint64_t substitutions = 0;    ///< plain loads: a default in place of what is missing
    std::uint64_t comments = 0;         ///< which no model keeps
    bool endsProperly = false;          ///< with `END-ISO-10303-21;`

    /// The first losses, in the order of the file.
    std::vector<Loss> losses;

    /// The number of records that are not in the model.
    std::uint64_t numRecordsLost() const {
        std::uint64_t sum = 0;
        for (const std::uint64_t count : recordsLost) sum += count;
        return sum;
    }
    /// The number of attributes and elements of kept records that are not as in the file.
    std::uint64_t numValuesNotKept() const { return attributesNotKept + elementsNotKept; }
    /// True if there is a model, all of the file is in it, comments aside, and the file is whole.
    bool isComplete() const {
        return noModel == NoModel::None && endsProperly && numRecordsLost() == 0 &&
               numValuesNotKept() == 0 && substitutions == 0;
    }
};

}  // namespace Ovik
