// A program that is linked to the archive of the library: the linker takes out of it only what
// something names, and the program's global constructors may run before those of the library. What
// the library makes of a file must not depend on either.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "ovik/api.h"
#include "ovik/api/ifc4.h"
#include "ovik/ovik.h"
#include "tests/files.h"

namespace {

using namespace Ovik;

/// From all over the alphabet, so that no part of a schema can be missing.
constexpr const char* kClasses[] = {"IFCBEAM", "IFCCOLUMN", "IFCDOOR",          "IFCFACE",
                                    "IFCGRID", "IFCPERSON", "IFCRELAGGREGATES", "IFCPOLYLOOP",
                                    "IFCSITE", "IFCWALL"};

struct Lookup : RtClass {
    using RtClass::findCreator;
    using RtClass::RtClass;
};

/// Loads a file of `schema`, asks its entities and writes them: all that came of it.
std::string useLibrary(const std::string& schema) {
    std::string records = "#1=IFCCARTESIANPOINT((1.,2.));\n#2=IFCVERTEXPOINT(#1);\n";
    int number = 10;
    for (const char* name : kClasses)
        records += "#" + std::to_string(number++) + "=" + name + "();\n";
    const OvikTest::TempFile file(OvikTest::fileOf(records, schema)), logFile, copy;
    std::ostringstream all;
    {
        ErrLog log(logFile.path);
        const IfcModelPtr model(IfcModel::read(file.path, &log));
        if (!model) return "no model";
        for (std::uint64_t i = 0; i < model->getNumEntities(); ++i) {
            const IfcEntity& entity = *model->get(i);
            for (auto* cls = entity.isA(); cls; cls = cls->parent()) all << cls->className() << ' ';
            IfcVariant value;
            all << entity.getAttribute("Coordinates", value) << '\n';
        }
        model->write(copy.path, IfcHeader());
    }
    const std::string written = copy.text();
    all << logFile.text() << written.substr(written.find("DATA;"));
    return all.str();
}

/// What the program sees before the first initialiser of the library.
struct Early {
    std::string ifc2x3, ifc4;
    bool isWallOwn, isOtherFound, areDescriptorsUnset;
};

const Early& early() {
    static const Early result = [] {
        static const Lookup wall("IFCWALL", nullptr, nullptr, eIFC4);
        static const Lookup other("IFCOTHER", nullptr, nullptr, eIFC4);
        const RtClass* const found = Lookup::findCreator("IfcWall", eIFC4);
        return Early{useLibrary("IFC2X3"), useLibrary("IFC4"), found && found != &wall,
                     Lookup::findCreator("IfcOther", eIFC4) == &other,
                     !static_cast<const char*>(IfcApi::Ifc4::IfcBeam)};
    }();
    return result;
}

// The objects of a program start before what comes out of an archive.
[[maybe_unused]] const Early& runsFirst = early();

TEST(StaticProgram, LoadsAsksAndWritesWheneverItRuns) {
    std::string expected =
        "IFCCARTESIANPOINT IFCPOINT IFCGEOMETRICREPRESENTATIONITEM IFCREPRESENTATIONITEM IfcEntity "
        "0\nIFCVERTEXPOINT IFCVERTEX IFCTOPOLOGICALREPRESENTATIONITEM IFCREPRESENTATIONITEM "
        "IfcEntity 1\n";
    int number = 10;
    for (const char* name : kClasses) {
        expected += "\nNo data to read\nFailed to read object #" + std::to_string(number++) +
                    " of class " + name + "\n";
    }
    expected +=
        "DATA;\n#1= IFCCARTESIANPOINT((1.,2.));\n#2= IFCVERTEXPOINT(#1);\nENDSEC;\n"
        "END-ISO-10303-21;\n";
    EXPECT_EQ(early().ifc2x3, expected);
    EXPECT_EQ(early().ifc4, expected);
    EXPECT_EQ(useLibrary("IFC2X3"), expected);
    EXPECT_EQ(useLibrary("IFC4"), expected);
    EXPECT_TRUE(early().areDescriptorsUnset);
    IfcApi::initOvikApi();
    EXPECT_STREQ(IfcApi::Ifc4::IfcBeam, "IFCBEAM");
}

// A class from outside is found behind the schema's own if it was there before the library, and
// in its place if it came later.
TEST(StaticProgram, ClassesFromOutsideStandWhereTheirTimePutsThem) {
    EXPECT_TRUE(early().isWallOwn);
    EXPECT_TRUE(early().isOtherFound);
    static const Lookup beam("IFCBEAM", nullptr, nullptr, eIFC2X3);
    EXPECT_EQ(Lookup::findCreator("IfcBeam", eIFC2X3), &beam);

    RtClass::init();
    for (const char* name : {"IfcBeam", "IfcWall"}) {
        EXPECT_EQ(Lookup::findCreator(name, eIFC2X3), nullptr) << name;
        EXPECT_NE(Lookup::findCreator(name, eIFC4), nullptr) << name;
    }
    static const Lookup late("IFCWALL", nullptr, nullptr, eIFC2X3);
    EXPECT_EQ(Lookup::findCreator("IfcWall", eIFC2X3), &late);
}

}  // namespace
