// Reads a schema table and resolves its names.
#include "schema.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>

namespace Ovik::Generator {
namespace {

using Words = std::vector<std::string>;

struct Line {
    int number;
    bool indented;
    Words words;
};

std::vector<Line> readLines(const std::filesystem::path& path) {
    std::ifstream file(path);
    if (!file) throw std::runtime_error("can't open " + path.string());
    std::vector<Line> lines;
    std::string text;
    for (int number = 1; std::getline(file, text); ++number) {
        std::istringstream in(text);
        Line line{number, !text.empty() && text[0] == ' ', {}};
        for (std::string word; in >> word;) line.words.push_back(word);
        if (!line.words.empty() && line.words[0][0] != '#') lines.push_back(std::move(line));
    }
    return lines;
}

class Reader {
 public:
    explicit Reader(std::vector<Line> lines) : lines_(std::move(lines)) {}

    std::unique_ptr<Schema> run() {
        declare();
        define();
        return std::move(schema_);
    }

 private:
    [[noreturn]] void fail(const std::string& what) const {
        throw std::runtime_error("line " + std::to_string(line_) + ": " + what);
    }

    // First pass: everything gets an object to point at.
    void declare() {
        for (const Line& line : lines_) {
            line_ = line.number;
            const Words& w = line.words;
            if (line.indented) continue;
            if (w.size() < 2) fail("a declaration needs a name");
            if (w[0] == "schema") {
                schema_->name = w[1];
            } else if (w[0] == "type") {
                definedTypes_[w[1]] = Words(w.begin() + 3, w.end());
            } else if (w[0] == "enum") {
                auto item = std::make_unique<Enumeration>();
                item->name = w[1];
                item->literals.assign(w.begin() + 3, w.end());
                enumerations_[w[1]] = item.get();
                schema_->enumerations.push_back(std::move(item));
            } else if (w[0] == "select") {
                selects_[w[1]] = add(schema_->selects, w[1]);
            } else if (w[0] == "entity") {
                entities_[w[1]] = add(schema_->entities, w[1]);
            } else {
                fail("unknown word " + w[0]);
            }
        }
    }

    template <class T>
    static T* add(std::vector<std::unique_ptr<T>>& list, const std::string& name) {
        list.push_back(std::make_unique<T>());
        list.back()->name = name;
        return list.back().get();
    }

    // Second pass: the contents, with all names known.
    void define() {
        Entity* entity = nullptr;
        for (const Line& line : lines_) {
            line_ = line.number;
            const Words& w = line.words;
            if (line.indented) {
                if (!entity) fail("an attribute outside an entity");
                defineMember(*entity, w);
            } else if (w[0] == "select") {
                Select& select = *selects_[w[1]];
                for (std::size_t i = 3; i < w.size(); ++i) {
                    select.choices.push_back({w[i], resolve({w[i]})});
                }
            } else if (w[0] == "entity") {
                entity = entities_[w[1]];
                std::size_t i = 2;
                if (i < w.size() && w[i] == "abstract") {
                    entity->isAbstract = true;
                    ++i;
                }
                if (i + 1 < w.size() && w[i] == ":") entity->parent = find(entities_, w[i + 1]);
            }
        }
        std::sort(schema_->aggregates.begin(), schema_->aggregates.end(),
                  [](const auto& a, const auto& b) { return a->name < b->name; });
    }

    void defineMember(Entity& entity, const Words& w) {
        if (w[0] == "derived") {
            const auto dot = w[1].find('.');
            const Entity* owner = find(entities_, w[1].substr(0, dot));
            if (entity.redeclared && entity.redeclared != owner) fail("two redeclared classes");
            entity.redeclared = owner;
            const std::string name = w[1].substr(dot + 1);
            const auto& list = owner->attributes;
            const auto found = std::find_if(list.begin(), list.end(),
                                            [&](const Attribute& a) { return a.name == name; });
            if (found == list.end()) fail("no attribute " + w[1]);
            entity.derived |= 1u << (found - list.begin());
        } else if (w[0] == "by") {
            (w.at(2) == "read" ? entity.readByHand : entity.validateByHand) = true;
        } else {
            Attribute attribute;
            attribute.name = w[0];
            attribute.optional = w.at(2) == "optional";
            const Words type(w.begin() + (attribute.optional ? 3 : 2), w.end());
            for (const std::string& word : type) {
                attribute.declaredType += (attribute.declaredType.empty() ? "" : " ") + word;
            }
            attribute.type = resolve(type);
            if (entity.name == "IfcRoot" && attribute.name == "GlobalId") {
                attribute.type.plain = Plain::Guid;
            }
            entity.attributes.push_back(std::move(attribute));
        }
    }

    template <class T>
    T* find(const std::map<std::string, T*>& map, const std::string& name) const {
        const auto found = map.find(name);
        if (found == map.end()) fail("unknown name " + name);
        return found->second;
    }

    Type resolve(const Words& words) {
        static const std::map<std::string, Plain> plains = {
            {"real", Plain::Real},       {"number", Plain::Real},     {"integer", Plain::Integer},
            {"boolean", Plain::Boolean}, {"logical", Plain::Logical}, {"string", Plain::String},
            {"binary", Plain::Binary}};
        Type type;
        const std::string& name = words.at(0);
        if (name == "list" || name == "set" || name == "array") {
            type.aggregate = aggregate(words);
        } else if (const auto plain = plains.find(name); plain != plains.end()) {
            type.plain = plain->second;
        } else if (const auto e = entities_.find(name); e != entities_.end()) {
            type.entity = e->second;
        } else if (const auto n = enumerations_.find(name); n != enumerations_.end()) {
            type.enumeration = n->second;
        } else if (const auto s = selects_.find(name); s != selects_.end()) {
            type.select = s->second;
        } else if (const auto d = definedTypes_.find(name); d != definedTypes_.end()) {
            type = resolve(d->second);
        } else {
            fail("unknown type " + name);
        }
        return type;
    }

    // list 1 ? of ELEMENT: the class is named after its words.
    const Aggregate* aggregate(const Words& words) {
        const Words elementWords(words.begin() + 4, words.end());
        Aggregate result;
        result.element = resolve(elementWords);
        std::string element = elementWords[0];
        if (element == "real") element = "double";
        if (element == "integer") element = "int";
        if (element == "binary") {
            // Binaries without a name of their own are kept as unsigned numbers.
            element = "unsigned_int";
            result.element.plain = Plain::Unsigned;
        }
        if (result.element.aggregate && elementWords.size() > 1) {
            element = result.element.aggregate->name;
        }
        const std::string kind =
            std::string(1, static_cast<char>(words[0][0] - 'a' + 'A')) + words[0].substr(1);
        result.lower = static_cast<unsigned>(std::stoul(words[1]));
        result.name = kind + "_" + words[1] + "_";
        if (words[2] != "?") {
            result.upper = static_cast<unsigned>(std::stoul(words[2]));
            result.name += words[2] + "_";
        }
        result.name += element;
        Aggregate*& known = aggregates_[result.name];
        if (!known) {
            known = add(schema_->aggregates, result.name);
            *known = result;
        }
        return known;
    }

    std::vector<Line> lines_;
    int line_ = 0;
    std::unique_ptr<Schema> schema_ = std::make_unique<Schema>();
    std::map<std::string, Words> definedTypes_;
    std::map<std::string, Enumeration*> enumerations_;
    std::map<std::string, Select*> selects_;
    std::map<std::string, Aggregate*> aggregates_;
    std::map<std::string, Entity*> entities_;
};

}  // namespace

std::size_t Enumeration::defaultTag() const {
    const auto found = std::find(literals.begin(), literals.end(), "NOTDEFINED");
    return found == literals.end() ? 0 : static_cast<std::size_t>(found - literals.begin());
}

bool Enumeration::hasNotDefined() const {
    return std::find(literals.begin(), literals.end(), "NOTDEFINED") != literals.end();
}

bool Select::hasEntities() const {
    return std::any_of(choices.begin(), choices.end(), [](auto& c) { return c.type.entity; });
}

bool Select::hasSelects() const {
    return std::any_of(choices.begin(), choices.end(), [](auto& c) { return c.type.select; });
}

bool Select::hasValues() const {
    return std::any_of(choices.begin(), choices.end(),
                       [](auto& c) { return !c.type.entity && !c.type.select; });
}

int Select::numEntityChoices() const {
    int count = 0;
    for (const Choice& choice : choices) {
        if (choice.type.entity) ++count;
        if (choice.type.select) count += choice.type.select->numEntityChoices();
    }
    return count;
}

bool Aggregate::canRefer() const {
    return element.entity || (element.select && element.select->numEntityChoices() > 0);
}

bool Entity::isKindOf(const std::string& ancestor) const {
    for (const Entity* e = this; e; e = e->parent) {
        if (e->name == ancestor) return true;
    }
    return false;
}

std::unique_ptr<Schema> Schema::read(const std::filesystem::path& path) {
    return Reader(readLines(path)).run();
}

}  // namespace Ovik::Generator
