// Reads a schema table. A name may be used above the line that declares it, so there are rounds:
// everything gets an object to point at, then come supertypes, contents, and at last what can only
// be said once all contents are known.
#include <algorithm>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

#include "line.h"
#include "names.h"
#include "plaintypes.h"
#include "schema.h"

namespace Ovik::Generator {
namespace {

constexpr unsigned kMaxByteValue = 0xFFFF;
constexpr unsigned kMaxPosition = 0xFF;

// An entity has a bit for each of its attributes in an unsigned number.
constexpr std::size_t kMaxAttributes = 32;

std::vector<Line> splitLines(const std::string& text, const std::string& file) {
    std::istringstream in(text);
    std::vector<Line> lines;
    std::string content;
    int number = 0;
    while (std::getline(in, content)) {
        Line line(file, ++number, content);
        if (!line.empty()) lines.push_back(std::move(line));
    }
    if (lines.empty()) Line(file, number + 1, "").failExpected("\"schema\"");
    return lines;
}

bool isAggregateWord(const std::string& word) {
    return word == "list" || word == "set" || word == "array";
}

// Looks for `select` in the values that a value of this type is made of.
bool contains(const Type& type, const Select& select, std::set<const Select*>& visited) {
    if (type.aggregate) return contains(type.aggregate->element, select, visited);
    if (!type.select) return false;
    if (type.select == &select) return true;
    if (!visited.insert(type.select).second) return false;
    return std::ranges::any_of(type.select->choices, [&](const Choice& choice) {
        return contains(choice.type, select, visited);
    });
}

class Reader {
 public:
    Reader(const std::string& text, const std::string& file) : lines_(splitLines(text, file)) {
        schema_->file = std::filesystem::path(file).filename().string();
    }

    std::unique_ptr<Schema> run() {
        readSchemaName(lines_[0]);
        for (std::size_t i = 1; i < lines_.size(); ++i) declare(lines_[i]);
        each(entities_, &Reader::readHead);
        each(entities_, &Reader::checkAncestors);
        for (auto& [name, declared] : names_) resolve(declared);
        each(enumerations_, &Reader::readLiterals);
        each(selects_, &Reader::readChoices);
        each(selects_, &Reader::checkContents);
        each(attributes_, &Reader::readAttribute);
        each(attributes_, &Reader::checkInherited);
        each(remarks_, &Reader::readRemark);
        each(entities_, &Reader::checkRemarks);
        std::ranges::sort(schema_->aggregates, {}, &Aggregate::name);
        return std::move(schema_);
    }

 private:
    // What a line tells of.
    template <class T>
    using LinesOf = std::vector<std::pair<Line*, T*>>;

    // A name that has been declared, and what it stands for.
    struct Declared {
        Line* line;
        enum State { Unresolved, Resolving, Resolved } state;
        Type type;
    };

    template <class T>
    void each(const LinesOf<T>& lines, void (Reader::*step)(Line&, T&)) {
        for (const auto& [line, item] : lines) (this->*step)(*line, *item);
    }

    // -- declarations -------------------------------------------------------------------------

    void readSchemaName(Line& line) {
        line.expect("schema");
        const std::string what = "the name of the schema in capitals";
        if (line.peek() != recordName(line.peek())) line.failExpected(what);
        schema_->name = line.name(what);
        constexpr unsigned kMaxId = std::numeric_limits<int>::max();
        schema_->id = line.wholeNumber("the identifier of the schema", 0, kMaxId);
        line.end();
    }

    void readHash(Line& line) {
        HashTable& table = schema_->hashTable;
        if (line.accept("filler")) {
            const unsigned value = line.wholeNumber("a value", 0, kMaxByteValue);
            table.filler = static_cast<std::uint16_t>(value);
        } else if (line.accept("positions")) {
            do {
                const unsigned least = table.positions.empty() ? 1 : table.positions.back() + 1u;
                const std::string what = "a position from " + std::to_string(least) + " on";
                if (table.positions.size() == NameHash::kMaxPositions) line.end();
                const unsigned position = line.wholeNumber(what, least, kMaxPosition);
                table.positions.push_back(static_cast<std::uint8_t>(position));
            } while (!line.atEnd());
        } else if (line.accept("values")) {
            do {
                const auto [byte, value] =
                    line.byteValue("a byte and its value, as A=20", kMaxByteValue);
                table.values.push_back({byte, static_cast<std::uint16_t>(value)});
            } while (!line.atEnd());
        } else {
            line.failExpected("\"filler\", \"positions\" or \"values\"");
        }
        line.end();
        if (!table.positions.empty()) {
            schema_->hash = NameHash(table.filler, table.positions, table.values);
        }
    }

    void declare(Line& line) {
        if (line.indented()) {
            if (!entity_) line.fail("expected an entity above what belongs to one");
            const std::string& word = line.peek();
            const bool isRemark = word == "derived" || word == "by" || word == "identified";
            (isRemark ? remarks_ : attributes_).emplace_back(&line, entity_);
            return;
        }
        entity_ = nullptr;
        if (line.accept("hash")) {
            readHash(line);
        } else if (line.accept("by")) {
            for (const char* word : {"hand", "back", "references"}) line.expect(word);
            line.end();
            schema_->backRefsByHand = true;
        } else if (line.accept("type")) {
            declareName(line).state = Declared::Unresolved;
        } else if (line.accept("enum")) {
            declareItem(line, schema_->enumerations, enumerations_, &Type::enumeration);
        } else if (line.accept("select")) {
            declareItem(line, schema_->selects, selects_, &Type::select);
        } else if (line.accept("entity")) {
            entity_ = declareItem(line, schema_->entities, entities_, &Type::entity);
        } else {
            line.failExpected(
                "\"hash\", \"by hand\", \"type\", \"enum\", \"select\" or \"entity\"");
        }
    }

    Declared& declareName(Line& line) {
        const std::string name = line.name("a name with a capital first");
        const auto [place, isNew] = places_.emplace(recordName(name), line.number());
        if (!isNew) {
            line.fail(name + " is declared already, in line " + std::to_string(place->second));
        }
        return names_.emplace(name, Declared{&line, Declared::Resolved, {}}).first->second;
    }

    template <class T>
    T* declareItem(Line& line, std::vector<std::unique_ptr<T>>& list, LinesOf<T>& lines,
                   const T* Type::*member) {
        T* const item = list.emplace_back(std::make_unique<T>()).get();
        item->name = line.peek();
        declareName(line).type.*member = item;
        lines.emplace_back(&line, item);
        return item;
    }

    // What stands at the next word, whose name has to be declared.
    Declared& lookUp(Line& line, const std::string& what) {
        const auto found = names_.find(line.peek());
        if (found == names_.end()) line.failExpected(what);
        return found->second;
    }

    // -- types --------------------------------------------------------------------------------

    const Type& resolve(Declared& declared) {
        Line& line = *declared.line;
        if (declared.state == Declared::Resolving) line.fail("this type is defined by itself");
        if (declared.state == Declared::Unresolved) {
            declared.state = Declared::Resolving;
            line.expect("=");
            declared.type = readType(line);
            line.end();
            declared.state = Declared::Resolved;
        }
        return declared.type;
    }

    Type readType(Line& line) {
        Type type;
        const PlainType* const plain = findPlainType(line.peek());
        if (isAggregateWord(line.peek())) {
            type.aggregate = readAggregate(line);
        } else if (plain) {
            type.plain = plain->plain;
            line.advance();
        } else {
            type = resolve(lookUp(line, "a type"));
            line.advance();
        }
        return type;
    }

    // list 1 ? of ELEMENT: the class is named after its words.
    const Aggregate* readAggregate(Line& line) {
        Aggregate aggregate;
        aggregate.declaredType = line.rest();
        std::string& name = aggregate.name;
        name = recordName(line.peek().substr(0, 1)) + line.peek().substr(1) + "_";
        line.advance();
        aggregate.lower = line.wholeNumber("the lower bound");
        name += std::to_string(aggregate.lower) + "_";
        if (!line.accept("?")) {
            const unsigned least = std::max(aggregate.lower, 1u);
            const std::string what = "\"?\" or an upper bound from " + std::to_string(least);
            aggregate.upper = line.wholeNumber(what, least);
            name += std::to_string(aggregate.upper) + "_";
        }
        line.expect("of");
        const std::string element = line.peek();
        aggregate.element = readType(line);
        if (isAggregateWord(element)) {
            name += aggregate.element.aggregate->name;
        } else if (const PlainType* plain = findPlainType(element)) {
            name += plain->inListName;
        } else {
            name += element;
        }
        Aggregate*& known = aggregates_[name];
        if (!known) {
            known = schema_->aggregates.emplace_back(std::make_unique<Aggregate>(aggregate)).get();
        }
        return known;
    }

    // -- enumerations and selects -------------------------------------------------------------

    // What is found by name in one place is found by its hash, and then by its letters without
    // their case: others there have to differ in both.
    template <class T, class Name = std::identity>
    void checkName(const Line& line, const std::string& name, const std::vector<T>& others,
                   Name nameOf = {}) const {
        const auto sameLetters = [&](const std::string& other) {
            return recordName(other) == recordName(name);
        };
        const auto clash = std::ranges::find_if(
            others,
            [&](const std::string& other) {
                return sameLetters(other) || schema_->hash(other) == schema_->hash(name);
            },
            nameOf);
        if (clash == others.end()) return;
        const std::string& other = std::invoke(nameOf, *clash);
        if (sameLetters(other)) line.fail(name + " is here already");
        line.fail(name + " has the name hash of " + other + " and would not be found");
    }

    void readLiterals(Line& line, Enumeration& enumeration) {
        line.expect("=");
        do {
            const std::string literal = line.name("a literal");
            checkName(line, literal, enumeration.literals);
            enumeration.literals.push_back(literal);
        } while (!line.atEnd());
    }

    void readChoices(Line& line, Select& select) {
        line.expect("=");
        do {
            const Type& type = resolve(lookUp(line, "a declared name"));
            const std::string name = line.name("a choice");
            checkName(line, name, select.choices, &Choice::name);
            select.choices.push_back({name, type});
        } while (!line.atEnd());
    }

    void checkContents(Line& line, Select& select) {
        for (const Choice& choice : select.choices) {
            std::set<const Select*> visited;
            if (contains(choice.type, select, visited)) {
                line.fail("its choice " + choice.name + " contains this select itself");
            }
        }
    }

    // -- entities -----------------------------------------------------------------------------

    void readHead(Line& line, Entity& entity) {
        entity.isAbstract = line.accept("abstract");
        if (line.atEnd()) return;
        if (!line.accept(":")) {
            line.failExpected(entity.isAbstract ? "\":\" or the end of the line"
                                                : "\"abstract\", \":\" or the end of the line");
        }
        entity.parent = lookUp(line, "an entity").type.entity;
        if (!entity.parent) line.failExpected("an entity");
        line.advance();
        line.end();
    }

    void checkAncestors(Line& line, Entity& entity) {
        std::set<const Entity*> visited;
        for (const Entity* e = entity.parent; e && visited.insert(e).second; e = e->parent) {
            if (e == &entity) line.fail(entity.name + " is a supertype of itself");
        }
    }

    void readAttribute(Line& line, Entity& entity) {
        Attribute attribute;
        attribute.name = line.name(
            "an attribute with a capital first, \"derived\", \"by hand\" or \"identified by\"");
        line.expect(":");
        attribute.optional = line.accept("optional");
        attribute.declaredType = line.rest();
        attribute.type = readType(line);
        line.end();
        checkName(line, attribute.name, entity.attributes, &Attribute::name);
        entity.attributes.push_back(std::move(attribute));
    }

    // The ancestors are asked first, each with a table of its own: the same letters would be found
    // there. The attributes of all stand in one record.
    void checkInherited(Line& line, Entity& entity) {
        line.rewind();
        auto& own = *std::ranges::find(entity.attributes, line.peek(), &Attribute::name);
        own.position = static_cast<std::size_t>(&own - entity.attributes.data());
        for (const Entity* e = entity.parent; e; e = e->parent) {
            own.position += e->attributes.size();
            for (const Attribute& attribute : e->attributes) {
                if (recordName(attribute.name) == recordName(line.peek())) {
                    line.fail(line.peek() + " is an attribute of " + e->name + " already");
                }
            }
        }
        if (own.position >= kMaxAttributes) {
            line.fail("more than " + std::to_string(kMaxAttributes) + " attributes in a record");
        }
    }

    void readRemark(Line& line, Entity& entity) {
        if (!said_.emplace(&entity, line.rest()).second) line.fail("this is said already");
        if (line.accept("derived")) {
            readDerived(line, entity);
        } else if (line.accept("by")) {
            line.expect("hand");
            if (line.accept("read")) {
                entity.readByHand = true;
            } else if (line.accept("validate")) {
                entity.validateByHand = true;
            } else {
                line.failExpected("\"read\" or \"validate\"");
            }
        } else {
            readIdentifier(line, entity);
        }
        line.end();
    }

    void checkRemarks(Line& line, Entity& entity) {
        if ((entity.readByHand || entity.validateByHand) && !entity.hasOperations()) {
            line.fail(entity.name + " has no attributes that could be treated by hand");
        }
        if (!entity.ownIdentifier.empty() && entity.parent &&
            !entity.parent->identifier().empty()) {
            line.fail(entity.name + " is identified by " + entity.parent->identifier() +
                      " already");
        }
    }

    // derived IfcSupertype.Attribute
    void readDerived(Line& line, Entity& entity) {
        if (!entity.parent) line.fail("expected a supertype of " + entity.name);
        const auto& list = entity.parent->attributes;
        const auto found = std::ranges::find(list, line.peek(), [&](const Attribute& a) {
            return entity.parent->name + "." + a.name;
        });
        if (found == list.end()) {
            line.failExpected(entity.parent->name + ". and one of its attributes");
        }
        entity.redeclared = entity.parent;
        entity.derived |= 1u << (found - list.begin());
        line.advance();
    }

    // identified by Attribute
    void readIdentifier(Line& line, Entity& entity) {
        line.expect("identified");
        line.expect("by");
        if (!entity.ownIdentifier.empty()) {
            line.fail(entity.name + " is identified by " + entity.ownIdentifier + " already");
        }
        const auto found = std::ranges::find_if(entity.attributes, [&](const Attribute& a) {
            return a.name == line.peek() && a.type.isPlain() && a.type.plain == Plain::String &&
                   !a.optional;
        });
        if (found == entity.attributes.end()) {
            line.failExpected("an attribute of this entity that is a string and not optional");
        }
        found->type.plain = Plain::Guid;
        entity.ownIdentifier = found->name;
        line.advance();
    }

    std::vector<Line> lines_;
    std::unique_ptr<Schema> schema_ = std::make_unique<Schema>();
    std::map<std::string, int> places_;  // names in capitals, and the lines that declare them
    std::map<std::string, Declared> names_;
    std::map<std::string, Aggregate*> aggregates_;
    Entity* entity_ = nullptr;  // the one that indented lines belong to, while lines are sorted
    LinesOf<Enumeration> enumerations_;
    LinesOf<Select> selects_;
    LinesOf<Entity> entities_;
    LinesOf<Entity> attributes_;
    LinesOf<Entity> remarks_;
    std::set<std::pair<const Entity*, std::string>> said_;  // remarks
};

}  // namespace

std::unique_ptr<Schema> Schema::parse(const std::string& text, const std::string& file) {
    return Reader(text, file).run();
}

std::unique_ptr<Schema> Schema::read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    if (file.peek() != std::ifstream::traits_type::eof()) text << file.rdbuf();
    if (file.bad() || !file.is_open() || text.bad()) {
        throw std::runtime_error(path.string() + ": can't be read");
    }
    auto schema = parse(text.str(), path.string());
    // The generated files are called after the schema, and the build after the table.
    if (path.stem() != lowerCase(schema->name)) {
        throw std::runtime_error(path.string() + ": the table of schema " + schema->name +
                                 " is called " + lowerCase(schema->name) + ".schema");
    }
    return schema;
}

}  // namespace Ovik::Generator
