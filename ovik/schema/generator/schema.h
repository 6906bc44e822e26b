// The schema table in memory: what the generator knows of a schema.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ovik/schema/common/namehash.h"

namespace Ovik::Generator {

using ::Ovik::Schema::NameHash;

struct Aggregate;
struct Entity;
struct Enumeration;
struct Select;

enum class Plain { Real, Integer, Unsigned, Boolean, Logical, String, Binary, Guid };

/// The type of an attribute, a choice or an element once the defined types are resolved: exactly
/// one of the pointers is set, or none for a plain type.
struct Type {
    Plain plain = Plain::Real;
    const Entity* entity = nullptr;
    const Enumeration* enumeration = nullptr;
    const Select* select = nullptr;
    const Aggregate* aggregate = nullptr;

    bool isPlain() const { return !entity && !enumeration && !select && !aggregate; }
};

struct Enumeration {
    std::string name;
    std::vector<std::string> literals;

    std::size_t defaultTag() const;
};

struct Choice {
    std::string name;
    Type type;
};

struct Select {
    std::string name;
    std::vector<Choice> choices;

    bool hasEntities() const;
    /// True for a select with so many fields that they are made when they are touched.
    bool isWide() const;
    /// Entity choices here and in nested selects.
    int numEntityChoices() const;
};

struct Aggregate {
    std::string name;
    unsigned lower = 0;
    unsigned upper = 0;  ///< 0 when unbounded
    Type element;
    std::string declaredType;  ///< as in the table, for comments

    /// True if its elements can refer to entities, so that it has a `validate`.
    bool canRefer() const;
};

struct Attribute {
    std::string name;
    std::string declaredType;  ///< as in the table, for comments
    Type type;
    bool optional = false;
    std::size_t position = 0;  ///< in a record of its entity, from 0
    int line = 0;              ///< of the table
};

struct Entity {
    std::string name;
    bool isAbstract = false;
    const Entity* parent = nullptr;
    std::vector<Attribute> attributes;
    /// The supertype whose attributes this class redeclares as derived, and which ones, as bits.
    const Entity* redeclared = nullptr;
    unsigned derived = 0;
    /// The attribute of this class that identifies its entities, or empty.
    std::string ownIdentifier;
    bool readByHand = false;
    bool validateByHand = false;

    bool isRoot() const { return !parent; }
    /// True if this class reads, writes and answers for attributes, so has the operations for it.
    bool hasOperations() const { return isRoot() || !attributes.empty() || redeclared; }
    /// True if it finds attributes by name; a class without its own leaves that to its supertype.
    bool hasNameAccess() const { return isRoot() || !attributes.empty(); }
    /// The attribute of this class or of an ancestor that identifies its entities, or empty: each
    /// new one gets an identifier.
    const std::string& identifier() const;
};

/// What the name hash of a schema is made with; nothing if the schema has no table for it.
struct HashTable {
    std::uint16_t filler = 0;
    std::vector<std::uint8_t> positions;
    std::vector<NameHash::ByteValue> values;
};

/// A whole schema. Pointers between its parts stay valid for its life.
struct Schema {
    std::string name;
    unsigned id = 0;
    std::string file;  ///< the name of the table
    HashTable hashTable;
    NameHash hash;
    bool backRefsByHand = false;
    std::vector<std::unique_ptr<Enumeration>> enumerations;
    std::vector<std::unique_ptr<Select>> selects;
    std::vector<std::unique_ptr<Aggregate>> aggregates;
    std::vector<std::unique_ptr<Entity>> entities;

    /// Reads the table in the file `path`, which is called after the schema, or the text of one
    /// that `file` names in messages. What it doesn't understand is never passed over: throws
    /// `std::runtime_error` with the file, the line, and what is expected there.
    static std::unique_ptr<Schema> read(const std::filesystem::path& path);
    static std::unique_ptr<Schema> parse(const std::string& text, const std::string& file);
};

}  // namespace Ovik::Generator
