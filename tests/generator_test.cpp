// The schema generator: what it refuses and where, and the classes that it makes of a small table.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "ovik/schema/generator/output.h"
#include "ovik/schema/generator/schema.h"
#include "ovik/schema/generator/writer.h"

namespace Ovik::Generator {
namespace {

const std::filesystem::path kTests = OVIK_SOURCE_DIR "/tests";

std::string contentOf(const std::filesystem::path& path) {
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

// What the reader says of a table, or nothing if it takes it.
std::string refusal(const std::string& table) {
    try {
        Schema::parse(table, "t");
        return {};
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
}

struct BadTable {
    const char* text;     // below the line `schema TOY 2`, with ; between lines
    const char* message;  // behind the file, with ' for "
};

constexpr BadTable kBadTables[] = {
    // Words
    {"thing A",
     "2: expected 'hash', 'by hand', 'type', 'enum', 'select' or 'entity', found 'thing'"},
    {"schema B 2",
     "2: expected 'hash', 'by hand', 'type', 'enum', 'select' or 'entity', found 'schema'"},
    {"by hand read", "2: expected 'back', found 'read'"},
    {"entity", "2: expected a name with a capital first, found the end of the line"},
    {"entity door", "2: expected a name with a capital first, found 'door'"},
    {"entity A-B", "2: expected a name with a capital first, found 'A-B'"},
    {"entity A abstrct", "2: expected 'abstract', ':' or the end of the line, found 'abstrct'"},
    {"entity A abstract abstract", "2: expected ':' or the end of the line, found 'abstract'"},
    {"entity A;entity B : A A", "3: expected the end of the line, found 'A'"},
    {"type A = real;  X : A", "3: expected an entity above what belongs to one"},
    {"entity A;type B = real;  X : B", "4: expected an entity above what belongs to one"},
    {"entity A;  x : real",
     "3: expected an attribute with a capital first, 'derived', 'by hand' or 'identified by', "
     "found 'x'"},
    {"entity A;  X real", "3: expected ':', found 'real'"},
    {"entity A;  X : optionl real", "3: expected a type, found 'optionl'"},
    {"entity A;  X :", "3: expected a type, found the end of the line"},
    {"entity A;  X : real real", "3: expected the end of the line, found 'real'"},
    {"entity A;  by hnd read", "3: expected 'hand', found 'hnd'"},
    {"entity A;  by hand vaildate", "3: expected 'read' or 'validate', found 'vaildate'"},
    {"entity A;entity B : A;  by hand read",
     "3: B has no attributes that could be treated by hand"},
    {"entity A;  by hand read validate", "3: expected the end of the line, found 'validate'"},
    // The name hash
    {"hash", "2: expected 'filler', 'positions' or 'values', found the end of the line"},
    {"hash filler 65536", "2: expected a value, found '65536'"},
    {"hash positions 0", "2: expected a position from 1 on, found '0'"},
    {"hash positions 1 3 3", "2: expected a position from 4 on, found '3'"},
    {"hash positions 1;hash positions 256", "3: expected a position from 2 on, found '256'"},
    {"hash positions 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17",
     "2: expected the end of the line, found '17'"},
    {"hash values A=20 B20", "2: expected a byte and its value, as A=20, found 'B20'"},
    {"hash values A=20 B=-1", "2: expected a byte and its value, as A=20, found 'B=-1'"},
    // Types
    {"type A", "2: expected '=', found the end of the line"},
    {"type A =", "2: expected a type, found the end of the line"},
    {"type A = B", "2: expected a type, found 'B'"},
    {"type A = A", "2: this type is defined by itself"},
    {"type A = B;type B = list 0 ? of C;type C = A", "2: this type is defined by itself"},
    {"type A = list one ? of real", "2: expected the lower bound, found 'one'"},
    {"type A = list 0 0 of real", "2: expected '?' or an upper bound from 1, found '0'"},
    {"type A = set 3 2 of real", "2: expected '?' or an upper bound from 3, found '2'"},
    {"type A = list 1 99999999999 of real",
     "2: expected '?' or an upper bound from 1, found '99999999999'"},
    {"type A = list 0 ? real", "2: expected 'of', found 'real'"},
    // Enumerations and selects
    {"enum A =", "2: expected a literal, found the end of the line"},
    {"enum A = X 1", "2: expected a literal, found '1'"},
    {"select A =", "2: expected a declared name, found the end of the line"},
    {"select A = real", "2: expected a declared name, found 'real'"},
    {"select A = B;select B = C;type C = list 0 ? of A",
     "2: its choice B contains this select itself"},
    // Names
    {"type A = real;;# A remark;entity A", "5: A is declared already, in line 2"},
    {"entity Door;enum DOOR = X", "3: DOOR is declared already, in line 2"},
    {"enum A = X Y X", "2: X is here already"},
    {"select A = B B;entity B", "2: B is here already"},
    {"entity A;  Ab : real;  AB : real", "4: AB is here already"},
    {"entity B : A;  X : real;entity A;  X : real", "3: X is an attribute of A already"},
    {"hash positions 1 2 3;entity A;  ABC : real;  BAC : real",
     "5: BAC has the name hash of ABC and would not be found"},
    {"hash positions 1 2 3;enum A = ABC BAC",
     "3: BAC has the name hash of ABC and would not be found"},
    // Supertypes
    {"entity A : B", "2: expected an entity, found 'B'"},
    {"entity A : B;type B = real", "2: expected an entity, found 'B'"},
    {"entity A : B;entity B : C;entity C : B", "3: B is a supertype of itself"},
    {"entity A;  derived A.X;  X : real", "3: expected a supertype of A"},
    {"entity A;  X : real;entity B : A;entity C : B;  derived A.X",
     "6: expected B. and one of its attributes, found 'A.X'"},
    {"entity A;  X : real;entity B : A;  derived A.Y",
     "5: expected A. and one of its attributes, found 'A.Y'"},
    // Identifiers
    {"entity A;  identified by X;  X : real",
     "3: expected an attribute of this entity that is a string and not optional, found 'X'"},
    {"entity A;  X : string;  identified by X;  identified by X", "5: this is said already"},
    {"entity A;  X : string;  identified by X;  Y : string;  identified by Y",
     "6: A is identified by X already"},
    {"entity B : A;  Y : string;  identified by Y;entity A;  X : string;  identified by X",
     "2: B is identified by X already"},
    {"entity A;  identified by X;  X : optional string",
     "3: expected an attribute of this entity that is a string and not optional, found 'X'"},
};

TEST(Generator, RefusesABadTableWithTheLine) {
    for (const BadTable& bad : kBadTables) {
        std::string table = std::string("schema TOY 2;") + bad.text;
        std::string message = std::string("t:") + bad.message;
        std::ranges::replace(table, ';', '\n');
        std::ranges::replace(message, '\'', '"');
        EXPECT_EQ(refusal(table), message) << bad.text;
    }
}

TEST(Generator, RefusesWhatDoesNotStartWithASchema) {
    EXPECT_EQ(refusal(""), "t:1: expected \"schema\", found the end of the line");
    EXPECT_EQ(refusal("# A remark\n\nentity A\n"), "t:3: expected \"schema\", found \"entity\"");
    EXPECT_EQ(refusal("schema Toy\n"),
              "t:1: expected the name of the schema in capitals, found \"Toy\"");
    EXPECT_EQ(refusal("schema TOY\n"),
              "t:1: expected the identifier of the schema, found the end of the line");
}

TEST(Generator, RefusesMoreAttributesThanAnEntityHasBitsFor) {
    std::string table = "schema TOY 2\nentity A\n";
    for (int i = 1; i <= 31; ++i) table += "  " + std::string(i, 'X') + " : real\n";
    table += "entity B : A\n  derived A." + std::string(31, 'X') + "\n  Y : real\n";
    const auto schema = Schema::parse(table, "t");
    EXPECT_EQ(schema->entities[1]->derived, 0x40000000u);
    EXPECT_EQ(schema->entities[1]->attributes[0].position, 31u);
    EXPECT_EQ(refusal(table + "  Z : real\n"), "t:37: more than 32 attributes in a record");
}

TEST(Generator, SaysWhichFileItCanNotRead) {
    for (const auto& path : {kTests, kTests / "missing.schema"}) {
        try {
            Schema::read(path);
            ADD_FAILURE() << path << " was read";
        } catch (const std::runtime_error& failure) {
            EXPECT_EQ(failure.what(), path.string() + ": can't be read");
        }
    }
}

// Whatever word is damaged, and wherever one is added or missing at the end: it is never passed
// over.
TEST(Generator, RefusesEveryDamagedWord) {
    std::istringstream in(contentOf(kTests / "toy.schema"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    ASSERT_GT(lines.size(), 30u);
    const auto refusedWith = [&](std::size_t i, const std::string& damaged) {
        std::string table;
        for (std::size_t k = 0; k < lines.size(); ++k)
            table += (k == i ? damaged : lines[k]) + "\n";
        const std::string place = "t:" + std::to_string(i + 1) + ": ";
        EXPECT_THAT(refusal(table), testing::StartsWith(place)) << damaged;
    };
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        if (line.starts_with('#')) continue;
        refusedWith(i, line + " surplus");
        for (std::size_t at = line.find_first_not_of(' '); at < line.size();) {
            const std::size_t end = std::min(line.find(' ', at), line.size());
            refusedWith(i, line.substr(0, at) + "~" + line.substr(at));
            at = end + 1;
        }
    }
}

// The classes as they are made, kept for review. If a change of them is meant, take over the files
// that the failure names.
TEST(Generator, MakesTheClassesThatAreKept) {
    const auto folder = std::filesystem::path(testing::TempDir()) / "ovik_toy";
    const auto schema = Schema::read(kTests / "toy.schema");
    const unsigned shards = 6;
    writeSchema(*schema, Output(folder, *schema, shards), shards);
    int count = 0;
    for (const auto& kept : std::filesystem::directory_iterator(kTests / "golden")) {
        if (kept.path().filename().string().starts_with('.')) continue;
        const auto made = kept.path().extension() == ".h"
                              ? folder / "ovik" / "toy" / kept.path().filename()
                              : folder / kept.path().filename();
        EXPECT_EQ(contentOf(made), contentOf(kept.path())) << "cp " << made << " " << kept.path();
        ++count;
    }
    EXPECT_EQ(count, 5);
}

}  // namespace
}  // namespace Ovik::Generator
