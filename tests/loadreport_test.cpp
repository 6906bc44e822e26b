// What a load tells as data, and the log of an exact one.
#include "ovik/imp/loadreport.h"

#include <gtest/gtest.h>

#include "loadtext.h"

namespace Ovik {
namespace {

using namespace Test;
using NoModel = IfcLoadReport::NoModel;

/// The losses as a log has them.
std::string lossesOf(const IfcLoadReport& report) {
    std::string text;
    for (const IfcLoadReport::Loss& loss : report.losses) {
        text += "line " + std::to_string(loss.line) + ": #" + std::to_string(loss.number);
        if (!loss.className.empty()) text += " " + loss.className;
        if (!loss.attribute.empty()) text += "." + loss.attribute;
        text += ": " + loss.cause + "\n";
    }
    return text;
}

class LoadReport : public testing::Test {
 protected:
    void SetUp() override { Probe::reset(); }

    IfcModelPtr load(const std::string& text, IfcReadOptions options = {}) {
        const TempFile file(text);
        return IfcModelPtr(
            IfcModel::read(file.path, nullptr, nullptr, &options, nullptr, &report_));
    }

    IfcLoadReport report_;
};

TEST_F(LoadReport, TellsWhyThereIsNoModel) {
    const std::string cut = OvikTest::kHead.substr(0, OvikTest::kHead.find("ENDSEC;"));
    std::string other = fileOf("#1=IFCPERSON($,$,$,$,$,$,$,$);");
    other.replace(other.find("IFC4"), 4, "Ifc9\\S\\d");
    const struct {
        std::string text;
        NoModel cause;
        unsigned line, column;
        const char* schema;
    } cases[] = {
        {fileOf(""), NoModel::None, 0, 0, "IFC4"},
        {"", NoModel::BrokenHeader, 1, 1, ""},
        {"ISO-10303-21;\n  17;", NoModel::BrokenHeader, 2, 3, ""},
        {cut, NoModel::BrokenHeader, 6, 1, ""},
        {other, NoModel::UnknownSchema, 0, 0, "Ifc9\xC3\xA4"},
    };
    for (const bool exact : {false, true}) {
        for (const auto& c : cases) {
            report_.recordsSeen = 5;  // of another load
            EXPECT_EQ(load(c.text, {.exact = exact}) != nullptr, c.cause == NoModel::None);
            EXPECT_EQ(report_.noModel, c.cause) << c.text;
            EXPECT_EQ(report_.headerLine, c.line) << c.text;
            EXPECT_EQ(report_.headerColumn, c.column) << c.text;
            EXPECT_EQ(report_.schema, c.schema) << c.text;
            EXPECT_EQ(report_.recordsSeen, 0u);
        }
    }
    EXPECT_EQ(IfcModel::read(TempFile().path, nullptr, nullptr, nullptr, nullptr, &report_),
              nullptr);
    EXPECT_EQ(report_.noModel, NoModel::CannotOpen);
    EXPECT_FALSE(report_.isComplete());

    // It opens, and the first page of a process can't be read.
    const std::filesystem::path broken = "/proc/self/mem";
    if (!std::filesystem::exists(broken)) GTEST_SKIP() << "no stream that breaks";
    EXPECT_EQ(IfcModel::read(broken, nullptr, nullptr, nullptr, nullptr, &report_), nullptr);
    EXPECT_EQ(report_.noModel, NoModel::BrokenStream);
}

TEST_F(LoadReport, CountsTheRecordsByWhatBecameOfThem) {
    const std::string text = fileOf(
        "#1=IFCTABLEROW($,$);\n"
        "#2=IFCNONE();#1=IFCTABLEROW($,$); /* a comment */\n"
        "\n#3=IFCTABLEROW($\n,);#4=IFCTABLEROW)$,$(;#5=#6=IFCTABLEROW($,$);\n"
        "#7=IFCTABLEROW(5,$);\n"
        "#9=IFCGRIDAXIS($,#8,.T.); /* another */\n"
        "#8=IFCGRIDAXIS($,$,.T.);\n");
    load(text);
    EXPECT_EQ(report_.noModel, NoModel::None);
    EXPECT_EQ(report_.recordsSeen, 10u);
    EXPECT_EQ(report_.recordsKept, 2u);  // #1 and #3
    EXPECT_EQ(report_.recordsSeen, report_.recordsKept + report_.numRecordsLost());
    EXPECT_EQ(report_.recordsLost[IfcLoadReport::BrokenSyntax], 3u);
    EXPECT_EQ(report_.comments, 2u);
    EXPECT_TRUE(report_.endsProperly);
    EXPECT_FALSE(report_.isComplete());
    const std::string losses = lossesOf(report_);
    EXPECT_EQ(losses,
              "line 9: #2: unknown class IFCNONE\n"
              "line 9: #1 IFCTABLEROW: number of a record before it\n"
              "line 12: #4 IFCTABLEROW: broken syntax\n"
              "line 12: #5: broken syntax\n"
              "line 12: #6: broken syntax\n"
              "line 13: #7 IFCTABLEROW.RowCells: value of the wrong kind\n"
              "line 14: #9 IFCGRIDAXIS.AxisCurve: reference to an object of the wrong class\n"
              "line 15: #8 IFCGRIDAXIS.AxisCurve: no value\n");
    report_.maxEntries = 2;
    load(text);
    EXPECT_EQ(report_.losses.size(), 2u);
    EXPECT_EQ(report_.numRecordsLost(), 8u);
    EXPECT_TRUE(losses.starts_with(lossesOf(report_)));

    load(text.substr(0, text.size() - 2));
    EXPECT_FALSE(report_.endsProperly);
}

TEST_F(LoadReport, NamesWhatAPlainLoadRepairs) {
    const struct {
        EIfcSchemaId schema;
        const char* records;
        unsigned attributes, elements, substitutions;
        const char* losses;
    } cases[] = {
        {eIFC4, "#1=IFCTABLEROW((IFCLABEL('a'),5,IFCLABEL(7),IFCNONE(1),IFCREAL(1.)),$);", 0, 3, 0,
         "line 8: #1 IFCTABLEROW.RowCells[2]: value of the wrong kind\n"
         "line 8: #1 IFCTABLEROW.RowCells[3]: value of the wrong kind\n"
         "line 8: #1 IFCTABLEROW.RowCells[4]: type that does not belong here\n"},
        {eIFC4, "#1=IFCCARTESIANPOINTLIST3D(((1.,2.,3.),(1.,2.,3),5));", 0, 3, 0,
         "line 8: #1 IFCCARTESIANPOINTLIST3D.CoordList[2]: too few elements\n"
         "line 8: #1 IFCCARTESIANPOINTLIST3D.CoordList[2][3]: value of the wrong kind\n"
         "line 8: #1 IFCCARTESIANPOINTLIST3D.CoordList[3]: value of the wrong kind\n"},
        {eIFC4, "#1=IFCPERSON($,$,$,$,$,$,(#2,#1),(#3));\n#2=IFCACTORROLE(.USERDEFINED.,$,$);", 1,
         2, 0,
         "line 8: #1 IFCPERSON.Roles[2]: reference to an object of the wrong class\n"
         "line 8: #1 IFCPERSON.Addresses: too few elements\n"
         "line 8: #1 IFCPERSON.Addresses[1]: reference to nothing\n"},
        {eIFC4, "#1=IFCBEAMTYPE('',#7,$,$,$,$,$,$,$,$);", 1, 0, 1,
         "line 8: #1 IFCBEAMTYPE.OwnerHistory: reference to nothing\n"
         "line 8: #1 IFCBEAMTYPE.PredefinedType: no value\n"},
        {eIFC2X3,
         "#1=IFCGEOMETRICREPRESENTATIONCONTEXT($,$,3,$,#3,$);\n"
         "#2=IFCGEOMETRICREPRESENTATIONSUBCONTEXT($,$,3,*,*,*,#1,$,.GRAPH_VIEW.,$);\n"
         "#3=IFCAXIS2PLACEMENT2D(#4,$);\n#4=IFCCARTESIANPOINT((0.,0.));",
         1, 0, 0,
         "line 9: #2 IFCGEOMETRICREPRESENTATIONSUBCONTEXT.CoordinateSpaceDimension: value of a "
         "derived attribute\n"},
    };
    for (const auto& c : cases) {
        load(fileOf(c.records, c.schema));
        EXPECT_EQ(report_.numRecordsLost(), 0u) << c.records;
        EXPECT_EQ(report_.attributesNotKept, c.attributes) << c.records;
        EXPECT_EQ(report_.elementsNotKept, c.elements) << c.records;
        EXPECT_EQ(report_.substitutions, c.substitutions) << c.records;
        EXPECT_EQ(lossesOf(report_), c.losses) << c.records;
    }
}

}  // namespace
}  // namespace Ovik
