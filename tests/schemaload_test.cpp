// Records of both schemas through a whole load and out again: what is kept, what is repaired, the
// words of the log, and the records that are written.
#include <gtest/gtest.h>

#include "loadtext.h"
#include "ovik/ifc2x3.h"

namespace Ovik {
namespace {

using namespace Test;

struct Case {
    const char* what;
    EIfcSchemaId schema;
    std::string records;
    std::string log;
    std::string kept;  // the records that are written, numbered anew; "=" for the same
    bool lenient = true;
};

class SchemaLoad : public testing::Test {
 protected:
    // The records are told as they stand in the file; '@' stands for an identifier.
    static std::string replaced(std::string text, std::string_view from, std::string_view to) {
        for (std::size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size()) {
            text.replace(at, from.size(), to);
        }
        return text;
    }
    void check(const std::vector<Case>& cases) {
        for (const Case& c : cases) {
            const Loaded loaded =
                loadRecords(replaced(c.records, "@", kGuid), c.schema, {c.lenient});
            EXPECT_EQ(loaded.log, c.log) << c.what;
            const std::string written = recordsOf(*loaded.model);
            EXPECT_EQ(
                replaced(replaced(replaced(written, ";\n", ";"), "= IFC", "=IFC"), kGuid, "@"),
                c.kept.empty()  ? "#1= ();"
                : c.kept == "=" ? c.records
                                : c.kept)
                << c.what;
        }
    }

    static constexpr std::string_view kGuid = "0000000000000000000001";
};

std::string failed(int id, const std::string& cls) {
    return "Failed to read object #" + std::to_string(id) + " of class " + cls + "\n";
}
std::string invalidType(unsigned position) {
    return "\nInvalid type of item " + std::to_string(position) + "\n";
}
std::string badMember(const std::string& member, int id) {
    return "Invalid data member '" + member + "' in #" + std::to_string(id) + ", removed.\n";
}
std::string removed(int id) {
    return "Invalid entity #" + std::to_string(id) + " is removed.\n";
}

TEST_F(SchemaLoad, SelectsOfEntities) {
    const std::string actor = "#1=IFCACTOR('@',$,$,$,$,";
    const std::string failedActor = failed(1, "IFCACTOR");
    check({
        {"the target stands later: the record is read again", eIFC4,
         actor + "#5);#5=IFCPERSON($,'f',$,$,$,$,$,$);", "",
         "#1=IFCACTOR('@',$,$,$,$,#2);#2=IFCPERSON($,'f',$,$,$,$,$,$);"},
        {"the target never comes", eIFC4, actor + "#5);#9=IFCACTOR('@',$,$,$,$,#5);",
         failedActor + failed(9, "IFCACTOR"), ""},
        {"the target is of no class of the select", eIFC4, actor + "#2);#2=IFCTABLEROW($,$);",
         failedActor, "#1=IFCTABLEROW($,$);"},
        {"no reference at all", eIFC4, actor + "'x');", failedActor, ""},
        {"no value", eIFC4, actor + "$);",
         "Ambiguous null reference in IFCACTORSELECT.\n" + failedActor, ""},
        {"an own entity, and one of the select that is a choice", eIFC2X3,
         "#1=IFCFILLAREASTYLE($,(#3,#2));#2=IFCCOLOURRGB($,1.,0.,5.);#3="
         "IFCDRAUGHTINGPREDEFINEDCOLOUR('red');",
         "",
         "#1=IFCFILLAREASTYLE($,(#2,#3));#2=IFCDRAUGHTINGPREDEFINEDCOLOUR('red');#3=IFCCOLOURRGB($,"
         "1.,0.,5.);"},
        {"no value, asked of both", eIFC2X3, "#1=IFCFILLAREASTYLE($,($));",
         "Ambiguous null reference in IFCFILLSTYLESELECT.\nAmbiguous null reference in "
         "IFCCOLOUR.\n" +
             failed(1, "IFCFILLAREASTYLE"),
         ""},
        {"one entity beside a select of others", eIFC4,
         "#1=IFCCURVESTYLE($,#3,$,$,$);#2=IFCCURVESTYLE($,#4,$,$,$);#3="
         "IFCDRAUGHTINGPREDEFINEDCURVEFONT('f');#4=IFCCURVESTYLEFONTANDSCALING($,#3,1.);",
         "",
         "#1=IFCCURVESTYLE($,#2,$,$,$);#2=IFCDRAUGHTINGPREDEFINEDCURVEFONT('f');#3=IFCCURVESTYLE($,"
         "#4,$,$,$);#4=IFCCURVESTYLEFONTANDSCALING($,#2,1.);"},
        {"lists before the select and around it are not doubled", eIFC2X3,
         "#1=IFCDOCUMENTREFERENCE($,$,'r');#4=IFCPERSON($,$,$,$,$,$,$,$);#2=IFCDOCUMENTINFORMATION("
         "'i','n',$,(#1),$,$,$,$,#5,(#4,#5),$,$,$,$,$,$,$);#5=IFCORGANIZATION($,'o',$,$,$);",
         "",
         "#1=IFCDOCUMENTREFERENCE($,$,'r');#2=IFCDOCUMENTINFORMATION('i','n',$,(#1),$,$,$,$,#3,(#4,"
         "#3),$,$,$,$,$,$,$);#3=IFCORGANIZATION($,'o',$,$,$);#4=IFCPERSON($,$,$,$,$,$,$,$);"},
    });
}

TEST_F(SchemaLoad, SelectsWithValues) {
    // A trimming select has one entity choice: it takes any reference, and validating judges it.
    const std::string line =
        "#1=IFCCARTESIANPOINT((0.,0.));#2=IFCCARTESIANPOINT((1.,0.));#3=IFCPOLYLINE((#1,#2));";
    const std::string trimmed = line + "#4=IFCTRIMMEDCURVE(#3,";
    const std::string rest = ",(IFCPARAMETERVALUE(1.)),.T.,.PARAMETER.);";
    const std::string half = "IFCPARAMETERVALUE(5.))" + rest;
    const std::string failedCurve = failed(4, "IFCTRIMMEDCURVE");
    for (const EIfcSchemaId schema : {eIFC2X3, eIFC4}) {
        check({
            {"both kinds", schema, trimmed + "(#2," + half, "", "="},
            {"a record that is not there, and one of another class", schema,
             trimmed + "(#9," + half + "#6=IFCTRIMMEDCURVE(#3,(#3)" + rest,
             badMember("Trim1", 6) + removed(6), trimmed + "(" + half},
            {"an element without value is left out", schema, trimmed + "($," + half,
             "Ambiguous null reference in IFCTRIMMINGSELECT.\n" + invalidType(0),
             trimmed + "(" + half},
            {"and fails the list when nothing remains", schema,
             trimmed + "(5.,IFCPARAMETERVALUE(1))" + rest,
             invalidType(0) + invalidType(0) + "Failed to read IFCPARAMETERVALUE.\n" + failedCurve,
             line},
            {"too many", schema, trimmed + "(#1,#2,#1)" + rest,
             "\nItem 1: invalid array size 3, expected at most 2\n" + failedCurve, line},
        });
    }

    const std::string style = "#1=IFCPRESENTATIONSTYLEASSIGNMENT((IFCNULLSTYLE(.NULL.)));";
    const std::string sets =
        "#1=IFCPROPERTYSET('@',$,$,$,(#2));#2=IFCCOMPLEXPROPERTY('c',$,'u',(#3));#3="
        "IFCPROPERTYSINGLEVALUE('p',$,$,$);";
    const std::string wall = "#4=IFCWALL('@',$,$,$,$,$,$,$,$);";
    check({
        {"an enumeration as choice", eIFC2X3, style, "", "="},
        {"an enumeration as choice", eIFC4, style, "", "="},
        {"an aggregate as choice, and a nested one of numbers", eIFC4,
         sets + wall +
             "#5=IFCRELDEFINESBYPROPERTIES('@',$,$,$,(#4),IFCPROPERTYSETDEFINITIONSET((#1)));#6="
             "IFCINDEXEDPOLYCURVE(#7,(IFCLINEINDEX((1,2)),IFCARCINDEX((2,3,1)),IFCARCINDEX((2,3))),"
             "$);#7=IFCCARTESIANPOINTLIST2D(((0.,0.),(1.,0.)));",
         "\nItem 0: invalid array size 2, expected at least 3\nFailed to read IFCARCINDEX.\n",
         "#1=IFCPROPERTYSET('@',$,$,$,(#2));#2=IFCCOMPLEXPROPERTY('c',$,'u',(#3));#3="
         "IFCPROPERTYSINGLEVALUE('p',$,$,$);#4=IFCWALL('@',$,$,$,$,$,$,$,$);#5="
         "IFCRELDEFINESBYPROPERTIES('@',$,$,$,(#4),IFCPROPERTYSETDEFINITIONSET((#1)));#6="
         "IFCINDEXEDPOLYCURVE(#7,(IFCLINEINDEX((1,2)),IFCARCINDEX((2,3,1))),$);#7="
         "IFCCARTESIANPOINTLIST2D(((0.,0.),(1.,0.)));"},
        {"an entity of a nested select that goes", eIFC4,
         "#1=IFCCURVESTYLEFONT($,(#9));#2=IFCCURVESTYLE($,#1,$,$,$);",
         badMember("PatternList", 1) + removed(1) + badMember("CurveFont", 2),
         "#1=IFCCURVESTYLE($,$,$,$,$);"},
        {"a single entity choice is not judged before validating", eIFC4,
         "#1=IFCFILLAREASTYLEHATCHING(#2,#9,$,$,0.);#2=IFCCURVESTYLE($,$,$,$,$);#3="
         "IFCFILLAREASTYLEHATCHING(#2,IFCPOSITIVELENGTHMEASURE(2.),$,$,0.);",
         badMember("StartOfNextHatchLine", 1) + removed(1),
         "#1=IFCCURVESTYLE($,$,$,$,$);#2=IFCFILLAREASTYLEHATCHING(#1,IFCPOSITIVELENGTHMEASURE(2.),$"
         ",$,0.);"},
    });
}

TEST_F(SchemaLoad, TypedValues) {
    // The value of a property is tried as each of three nested selects.
    struct Value {
        const char* text;
        std::string log;  // and the entity fails, if it isn't empty or `fails` is true
        bool fails = false;
        bool lenient = true;
    };
    const std::string wrongInner = invalidType(0);
    const std::string wrongAll = invalidType(2) + invalidType(2) + invalidType(2);
    const Value values[] = {
        {"IFCLABEL('x')", ""},
        {"IFCINTEGER(-5)", ""},
        {"IFCREAL(5.)", ""},
        {"IFCBOOLEAN(.F.)", ""},
        {"IFCLOGICAL(.U.)", ""},
        {"IFCLENGTHMEASURE(1.)", ""},
        {"IFCACCELERATIONMEASURE(1.)", ""},
        {"IFCDESCRIPTIVEMEASURE('d')", ""},
        {"IFCCOMPLEXNUMBER((1.,2.))", ""},
        {"IFCCOMPOUNDPLANEANGLEMEASURE((1,2,3,4))", ""},
        {"IFCTIMESTAMP(7)", ""},
        {"IFCNOSUCHTYPE(1)", "", true},
        {"IFCPROPERTYSINGLEVALUE(1)", "", true},
        {"IFCREAL(5)", wrongInner + "Failed to read IFCREAL.\n"},
        {"IFCLABEL($)", wrongInner + "Failed to read IFCLABEL.\n", true, false},
        {"IFCLOGICAL(.X.)", "Failed to read IFCLOGICAL.\n"},
        {"IFCCOMPLEXNUMBER((1.,2.,3.))",
         "\nItem 0: invalid array size 3, expected at most 2\nFailed to read IFCCOMPLEXNUMBER.\n"},
        {"IFCCOMPOUNDPLANEANGLEMEASURE((1,2.,3,4.))",
         invalidType(1) + invalidType(2) + "Failed to read IFCCOMPOUNDPLANEANGLEMEASURE.\n"},
        {"5", wrongAll},
        {"#1", wrongAll},
    };
    std::vector<Case> cases;
    for (const Value& value : values) {
        const std::string arguments = std::string("('p',$,") + value.text + ",$);";
        const bool fails = value.fails || !value.log.empty();
        for (const EIfcSchemaId schema : {eIFC2X3, eIFC4}) {
            cases.push_back({value.text, schema, "#1=IFCPROPERTYSINGLEVALUE" + arguments,
                             value.log + (fails ? failed(1, "IFCPROPERTYSINGLEVALUE") : ""),
                             fails ? "" : "=", value.lenient});
        }
    }
    cases.push_back({"names in any case, a missing text, and a value without its type", eIFC4,
                     "#1=IFCPROPERTYLISTVALUE('p',$,(IFCLabel($),IFCLABEL('b'),3),$);", wrongAll,
                     "#1=IFCPROPERTYLISTVALUE('p',$,(IFCLABEL(''),IFCLABEL('b')),$);"});
    check(cases);
}

TEST_F(SchemaLoad, MissingValues) {
    const std::string type = "IFCBEAMTYPE('@',$,$,$,$,$,$,$,$,";
    const std::string warning = "Warning: missing enum value(s) read as default value\n";
    const std::string curve = "#2=IFCCARTESIANPOINT((0.));";
    check({
        {"a type that is not given: the default, and one warning for the whole file", eIFC4,
         "#1=" + type + "$);#2=" + type + "$);#3=" + type + ".JOIST.);", warning,
         "#1=" + type + ".NOTDEFINED.);#2=" + type + ".NOTDEFINED.);#3=" + type + ".JOIST.);"},
        {"in a strict read it fails", eIFC4, "#1=" + type + "$);",
         invalidType(9) + failed(1, "IFCBEAMTYPE"), "", false},
        {"and so do a word of another enumeration and a text", eIFC4,
         "#1=" + type + ".NOTALITERAL.);#2=" + type + "'JOIST');",
         "\nFailed to match string NOTALITERAL as a value of enum class IfcBeamTypeEnum\n" +
             failed(1, "IFCBEAMTYPE") + invalidType(9) + failed(2, "IFCBEAMTYPE"),
         ""},
        {"an enumeration without that literal", eIFC2X3,
         curve + "#1=IFCBEZIERCURVE(1,(#2,#2),$,.F.,.F.);",
         invalidType(2) + failed(1, "IFCBEZIERCURVE"), "#1=IFCCARTESIANPOINT((0.));"},
        {"an optional enumeration stays unset", eIFC4, "#1=IFCBEAM('@',$,$,$,$,$,$,$,$);", "", "="},
        {"a required text is empty then", eIFC4, "#1=IFCORGANIZATION($,$,$,$,$);", "",
         "#1=IFCORGANIZATION($,'',$,$,$);"},
        {"but not in a strict read", eIFC4, "#1=IFCORGANIZATION($,$,$,$,$);",
         invalidType(1) + failed(1, "IFCORGANIZATION"), "", false},
        {"numbers, booleans, lists and identifiers are required", eIFC4,
         "#1=IFCCOLOURRGB($,$,0.,0.);#2=IFCGRIDAXIS($,#1,$);#3=IFCCARTESIANPOINT($);#4="
         "IFCPROPERTYSET($,$,$,$,$);",
         invalidType(1) + failed(1, "IFCCOLOURRGB") + invalidType(2) + failed(2, "IFCGRIDAXIS") +
             invalidType(0) + failed(3, "IFCCARTESIANPOINT") + invalidType(0) +
             failed(4, "IFCPROPERTYSET"),
         ""},
        {"an integer is no real, and a record may be too short but not too long", eIFC4,
         "#1=IFCCOLOURRGB($,1,0.,0.);#2=IFCCOLOURRGB($,1.);#3=IFCCOLOURRGB();#4=IFCCOLOURRGB($,1.,"
         "0.,0.,'more',#8);",
         invalidType(1) + failed(1, "IFCCOLOURRGB") + "\nNo data to read\n" +
             failed(2, "IFCCOLOURRGB") + "\nNo data to read\n" + failed(3, "IFCCOLOURRGB"),
         "#1=IFCCOLOURRGB($,1.,0.,0.);"},
        {"logicals: the unknown one in any case, and no other word", eIFC2X3,
         curve + "#3=IFCBEZIERCURVE(1,(#2,#2),.UNSPECIFIED.,.u.,.T.);#4=IFCBEZIERCURVE(1,(#2,#2),."
                 "UNSPECIFIED.,.X.,.T.);#5=IFCBEZIERCURVE(1,(#2,#2),.UNSPECIFIED.,1,.T.);",
         failed(4, "IFCBEZIERCURVE") + invalidType(3) + failed(5, "IFCBEZIERCURVE"),
         "#1=IFCCARTESIANPOINT((0.));#2=IFCBEZIERCURVE(1,(#1,#1),.UNSPECIFIED.,.U.,.T.);"},
        {"abstract classes, and those of the other schema", eIFC4,
         "#1=IFCROOT('@',$,$,$);#2=IFCBEZIERCURVE();#3=IFCLABEL('x');",
         "Error: invalid class name in #1\nError: invalid class name in #2\nError: invalid class "
         "name in #3\n",
         ""},
    });
}

TEST_F(SchemaLoad, Lists) {
    const std::string point = "#1=IFCCARTESIANPOINT((0.));";
    const auto size = [](unsigned item, unsigned is, const char* bound, unsigned due) {
        return "\nItem " + std::to_string(item) + ": invalid array size " + std::to_string(is) +
               ", expected at " + bound + " " + std::to_string(due) + "\n";
    };
    const std::string list3 = "=IFCCARTESIANPOINTLIST3D(";
    std::string pixels = "#1=IFCPIXELTEXTURE(.T.,.F.,.TEXTURE.,$,1,1,3,";
    check({
        {"bounds", eIFC4,
         point + "#2=IFCCARTESIANPOINT(());#3=IFCCARTESIANPOINT((0.,0.,0.,0.));#4=IFCPOLYLINE((#1))"
                 ";#5=IFCPERSON($,$,$,(),$,$,$,$);",
         size(0, 0, "least", 1) + failed(2, "IFCCARTESIANPOINT") + size(0, 4, "most", 3) +
             failed(3, "IFCCARTESIANPOINT") + size(0, 1, "least", 2) + failed(4, "IFCPOLYLINE") +
             size(3, 0, "least", 1) + failed(5, "IFCPERSON"),
         point},
        {"a bound of eight", eIFC2X3,
         "#1=IFCSOUNDPROPERTIES('@',#2,$,$,.T.,$,(#3,#3,#3,#3,#3,#3,#3,#3,#3));",
         size(6, 9, "most", 8) + failed(1, "IFCSOUNDPROPERTIES"), ""},
        {"elements of another kind are left out; the position counts those accepted", eIFC4,
         "#1=IFCCARTESIANPOINT((1,2.,'x'));#2=IFCCARTESIANPOINT((1,2,3));#3=IFCPOLYLINE((#1,5,#1));"
         "#4=IFCPERSON($,$,$,('a',5,$),$,$,$,$);",
         invalidType(0) + invalidType(1) + invalidType(0) + invalidType(0) + invalidType(0) +
             failed(2, "IFCCARTESIANPOINT") + invalidType(1) + invalidType(1),
         "#1=IFCCARTESIANPOINT((2.));#2=IFCPOLYLINE((#1,#1));#3=IFCPERSON($,$,$,('a',''),$,$,$,$)"
         ";"},
        {"lists of lists: the inner one is left out", eIFC4,
         "#1" + list3 + "((1.,2.,3.),(1.,2.),(4,5.,6.,7.),8.,(4,5.,6.)));#2" + list3 + "((1.)));",
         size(1, 2, "least", 3) + size(2, 4, "most", 3) + invalidType(3) + invalidType(0) +
             size(0, 1, "least", 3) + failed(2, "IFCCARTESIANPOINTLIST3D"),
         "#1=IFCCARTESIANPOINTLIST3D(((1.,2.,3.)));"},
        {"references in lists of lists are not judged", eIFC4,
         point + "#2=IFCCARTESIANPOINT($);#3=IFCRATIONALBSPLINESURFACEWITHKNOTS(1,1,((#1,#2),(#9,#"
                 "4)),.UNSPECIFIED.,.F.,.F.,.U.,(2,2),(2,2),(0.,1.),(0.,1.),.UNSPECIFIED.,((1.,1.),"
                 "(1.,1.)));#4=IFCPERSON($,$,$,$,$,$,$,$);",
         invalidType(0) + failed(2, "IFCCARTESIANPOINT"),
         point + "#2=IFCRATIONALBSPLINESURFACEWITHKNOTS(1,1,((#1,$),($,$)),.UNSPECIFIED.,.F.,.F.,."
                 "U.,(2,2),(2,2),(0.,1.),(0.,1.),.UNSPECIFIED.,((1.,1.),(1.,1.)));#3=IFCPERSON($,$,"
                 "$,$,$,$,$,$);"},
        {"a lower bound of nothing", eIFC2X3,
         point + "#2=IFCCURVEBOUNDEDPLANE(#3,#5,());#3=IFCPLANE(#4);#4=IFCAXIS2PLACEMENT3D(#1,$,$);"
                 "#5=IFCPOLYLINE((#1,#1));#6=IFCCURVEBOUNDEDPLANE(#3,#5,(#1,$));",
         "",
         point + "#2=IFCCURVEBOUNDEDPLANE(#3,#5,());#3=IFCPLANE(#4);#4=IFCAXIS2PLACEMENT3D(#1,$,$);"
                 "#5=IFCPOLYLINE((#1,#1));#6=IFCCURVEBOUNDEDPLANE(#3,#5,());"},
        {"the list of pixels keeps none, and never has what it needs", eIFC2X3,
         pixels + "(1,\"0\",-2,'a'));",
         invalidType(1) + "\nUnsigned value expected at item 2\n" + invalidType(2) +
             failed(1, "IFCPIXELTEXTURE"),
         ""},
        {"without a word, if all is well", eIFC2X3, pixels + "(1,2));",
         failed(1, "IFCPIXELTEXTURE"), ""},
    });
}

TEST_F(SchemaLoad, DerivedAttributes) {
    const std::string parent =
        "#1=IFCCARTESIANPOINT((0.,0.,0.));#2=IFCAXIS2PLACEMENT3D(#1,$,$);#3="
        "IFCGEOMETRICREPRESENTATIONCONTEXT($,'m',3,$,#2,$);";
    const auto context = [](int id, const std::string& values) {
        return "#" + std::to_string(id) + "=IFCGEOMETRICREPRESENTATIONSUBCONTEXT('b','m'," +
               values + ",#3,$,.MODEL_VIEW.,$);";
    };
    const std::string contextOut =
        "=IFCGEOMETRICREPRESENTATIONSUBCONTEXT('b','m',*,*,*,*,#3,$,.MODEL_VIEW.,$);";
    const std::string warning = "Warning: derived attribute value is ignored\n";
    const std::string failedContext = failed(4, "IFCGEOMETRICREPRESENTATIONSUBCONTEXT");
    check({
        {"asterisks", eIFC4, parent + context(4, "*,*,*,*"), "", parent + "#4" + contextOut},
        {"asterisks", eIFC2X3, parent + context(4, "*,*,*,*"), "", parent + "#4" + contextOut},
        {"values are passed over, with one warning", eIFC2X3,
         parent + context(4, "3,1.,#2,$") + context(5, "*,$,#2,#1"), warning,
         parent + "#4" + contextOut + "#5" + contextOut},
        {"so is one whose class is not known yet", eIFC2X3, context(4, "*,*,#2,*") + parent,
         warning, parent + "#4" + contextOut},
        {"values that do not fit", eIFC2X3,
         parent + context(4, "$,*,*,*") + context(5, "3.,*,*,*") + context(6, "*,*,$,*"),
         warning + invalidType(2) + failedContext + invalidType(2) +
             failed(5, "IFCGEOMETRICREPRESENTATIONSUBCONTEXT") +
             "Ambiguous null reference in IFCAXIS2PLACEMENT.\n" +
             failed(6, "IFCGEOMETRICREPRESENTATIONSUBCONTEXT"),
         parent},
        {"a strict read wants the values", eIFC2X3, parent + context(4, "3,1.,#2,$"), "",
         parent + "#4" + contextOut, false},
        {"and nothing else", eIFC2X3, parent + context(4, "*,*,*,*"),
         invalidType(2) + failedContext, parent, false},
        {"the other schema never does", eIFC4, parent + context(4, "3,1.,#2,$"),
         invalidType(2) + failedContext, parent},
        {"a unit, and no value for its dimensions", eIFC4,
         "#1=IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.);#2=IFCSIUNIT($,.LENGTHUNIT.,$,.METRE.);",
         invalidType(0) + failed(2, "IFCSIUNIT"), "#1=IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.);"},
        {"a mirrored profile", eIFC4,
         "#1=IFCPROFILEDEF(.AREA.,'p');#2=IFCMIRROREDPROFILEDEF(.AREA.,$,#1,*,'l');#3="
         "IFCMIRROREDPROFILEDEF(.AREA.,$,#1,$,'l');#4=IFCMIRROREDPROFILEDEF(.AREA.,$,$,*,'l');",
         invalidType(3) + failed(3, "IFCMIRROREDPROFILEDEF") + badMember("ParentProfile", 4) +
             removed(4),
         "#1=IFCPROFILEDEF(.AREA.,'p');#2=IFCMIRROREDPROFILEDEF(.AREA.,$,#1,*,'l');"},
    });

    const Loaded loaded = loadRecords(parent + context(4, "*,7.,#2,*"), eIFC2X3);
    const auto* ignored = loaded.find<IFC2X3::IfcGeometricRepresentationSubContext>(4);
    ASSERT_TRUE(ignored);
    EXPECT_FALSE(ignored->hasPrecision());
    EXPECT_EQ(ignored->getWorldCoordinateSystem().getIfcAxis2Placement3D(), nullptr);
}

TEST_F(SchemaLoad, OrientedEdgesTakeTheEndsOfTheirEdge) {
    const std::string edge =
        "#1=IFCCARTESIANPOINT((0.));#2=IFCVERTEXPOINT(#1);#3=IFCVERTEXPOINT(#1);#4=IFCEDGE(#2,#3);";
    const std::string start = "Invalid derived data member 'EdgeStart' in #6, removed.\n";
    for (const EIfcSchemaId schema : {eIFC2X3, eIFC4}) {
        check({
            {"both ways, and one of the other", schema,
             edge + "#5=IFCORIENTEDEDGE(*,*,#4,.T.);#6=IFCORIENTEDEDGE(*,*,#5,.F.);", "", "="},
            {"no edge", schema, edge + "#6=IFCORIENTEDEDGE(*,*,$,.T.);",
             badMember("EdgeElement", 6) + start + removed(6), edge},
            {"an edge that goes", schema, edge + "#5=IFCEDGE(#2,$);#6=IFCORIENTEDEDGE(*,*,#5,.T.);",
             badMember("EdgeEnd", 5) + removed(5) + badMember("EdgeElement", 6) + start +
                 removed(6),
             edge},
            {"itself", schema, edge + "#6=IFCORIENTEDEDGE(*,*,#6,.T.);",
             "Circular reference found in #6.\n" + removed(6) + badMember("EdgeElement", 6) +
                 start + removed(6),
             edge},
            {"ends where asterisks stand", schema, edge + "#5=IFCORIENTEDEDGE(#2,#3,#4,.T.);",
             invalidType(0) + failed(5, "IFCORIENTEDEDGE"), edge},
        });
    }
    // A reference to a higher number: the edge is judged, and gets its ends, on the way.
    const Loaded loaded = loadRecords(edge +
                                          "#5=IFCORIENTEDEDGE(*,*,#6,.F.);#6=IFCORIENTEDEDGE(*,*,#"
                                          "4,.T.);#7=IFCORIENTEDEDGE(*,*,#5,.F.);",
                                      eIFC2X3);
    const auto* const vertex2 = loaded.find<IFC2X3::IfcVertex>(2);
    const auto* const vertex3 = loaded.find<IFC2X3::IfcVertex>(3);
    for (const auto& [id, isForward] : {std::pair(6, true), {5, false}, {7, true}}) {
        const auto* const oriented = loaded.find<IFC2X3::IfcOrientedEdge>(id);
        ASSERT_TRUE(oriented) << id;
        EXPECT_EQ(oriented->getEdgeStart(), isForward ? vertex2 : vertex3) << id;
        EXPECT_EQ(oriented->getEdgeEnd(), isForward ? vertex3 : vertex2) << id;
    }
}

TEST_F(SchemaLoad, References) {
    const std::string user =
        "#1=IFCPERSON($,$,$,$,$,$,$,$);#2=IFCORGANIZATION($,'o',$,$,$);#3=IFCPERSONANDORGANIZATION("
        "#1,#2,$);#4=IFCAPPLICATION(#2,'v','n','i');";
    const std::string value = "#1=IFCPROPERTYSINGLEVALUE('p',$,$,$);";
    const std::string set = "=IFCPROPERTYSET('@',$,$,$,";
    check({
        {"a required reference: none, to no record, of another class", eIFC2X3,
         user + "#5=IFCACTOR('@',$,$,$,$,#1);#6=IFCACTOR('@',#99,$,$,$,#1);#7=IFCACTOR('@',#4,$,$,$"
                ",#1);",
         badMember("OwnerHistory", 5) + removed(5) + badMember("OwnerHistory", 6) + removed(6) +
             badMember("OwnerHistory", 7) + removed(7),
         user},
        {"an optional one: to no record, of another class", eIFC4,
         user + "#5=IFCACTOR('@',#99,$,$,$,#1);#6=IFCACTOR('@',#4,$,$,$,#1);",
         badMember("OwnerHistory", 6),
         user + "#5=IFCACTOR('@',$,$,$,$,#1);#6=IFCACTOR('@',$,$,$,$,#1);"},
        {"a removal spreads; optional references and selects are cleared instead", eIFC2X3,
         user + "#5=IFCOWNERHISTORY(#3,#4,$,.ADDED.,$,#4,$,0);#6=IFCPERSONANDORGANIZATION(#1,$,$);#"
                "7=IFCOWNERHISTORY(#6,#4,$,.ADDED.,$,$,$,0);#8=IFCACTOR('@',#7,$,$,$,#1);#9="
                "IFCACTOR('@',#5,$,$,$,#6);#10=IFCACTOR('@',#5,$,$,$,#3);#11="
                "IFCDOCUMENTINFORMATION('i','n',$,$,$,$,$,$,#6,(#6,#1),$,$,$,$,$,$,$);#12="
                "IFCRELASSIGNSTOACTOR('@',#5,$,$,(#8,#10),$,#9,$);",
         badMember("LastModifyingUser", 5) + badMember("TheOrganization", 6) + removed(6) +
             badMember("OwningUser", 7) + removed(7) + badMember("OwnerHistory", 8) + removed(8) +
             badMember("TheActor", 9) + removed(9) + badMember("DocumentOwner", 11) +
             badMember("RelatingActor", 12) + removed(12),
         user + "#5=IFCOWNERHISTORY(#3,#4,$,.ADDED.,$,$,$,0);#6=IFCACTOR('@',#5,$,$,$,#3);#7="
                "IFCDOCUMENTINFORMATION('i','n',$,$,$,$,$,$,$,(#1),$,$,$,$,$,$,$);"},
        {"elements of another class, of no record and of none; the others keep their order", eIFC4,
         value + "#2=IFCORGANIZATION($,'o',$,$,$);#3" + set + "(#4,#2,#99,$,#1));#4" +
             value.substr(2) + "#5" + set + "(#2,#99));#6=IFCPERSON($,$,$,$,$,$,(#1),(#1));",
         badMember("HasProperties", 5) + removed(5) + badMember("Roles", 6) +
             badMember("Addresses", 6),
         value + "#2=IFCORGANIZATION($,'o',$,$,$);#3" + set + "(#4,#1));#4" + value.substr(2) +
             "#5=IFCPERSON($,$,$,$,$,$,$,$);"},
        {"an entity that couldn't be read", eIFC4,
         value + "#2=IFCCOMPLEXPROPERTY('c',$,5,(#1));#3=IFCCOMPLEXPROPERTY('c',$,'u',(#2,#1));#4="
                 "IFCPROPERTYDEPENDENCYRELATIONSHIP($,$,#2,#3,$);",
         invalidType(2) + failed(2, "IFCCOMPLEXPROPERTY") + badMember("DependingProperty", 4) +
             removed(4),
         value + "#2=IFCCOMPLEXPROPERTY('c',$,'u',(#1));"},
        {"a circle of required references", eIFC4,
         value +
             "#2=IFCDERIVEDPROFILEDEF(.AREA.,$,#3,#9,$);#3=IFCDERIVEDPROFILEDEF(.AREA.,$,#2,#9,$);",
         "Circular reference found in #2.\n" + removed(2) + badMember("ParentProfile", 3) +
             removed(3) + badMember("ParentProfile", 2) + removed(2),
         value},
        {"circles that are cut: an optional reference, an element, an optional select", eIFC4,
         value + "#2=IFCLOCALPLACEMENT(#2,#4);#3=IFCCARTESIANPOINT((0.,0.));#4=IFCAXIS2PLACEMENT2D("
                 "#3,$);#5=IFCCOMPLEXPROPERTY('c',$,'u',(#1,#5));#6=IFCAPPLIEDVALUE($,$,#7,$,$,$,$,"
                 "$,$,$);#7=IFCREFERENCE($,$,$,$,#7);",
         "Circular reference found in #2.\n" + removed(2) + badMember("PlacementRelTo", 2) +
             "Circular reference found in #5.\n" + removed(5) +
             "Circular reference found in #7.\n" + removed(7) + badMember("InnerReference", 7),
         value + "#2=IFCLOCALPLACEMENT($,#3);#3=IFCAXIS2PLACEMENT2D(#4,$);#4=IFCCARTESIANPOINT((0.,"
                 "0.));#5=IFCCOMPLEXPROPERTY('c',$,'u',(#1));#6=IFCAPPLIEDVALUE($,$,#7,$,$,$,$,$,$,"
                 "$);#7=IFCREFERENCE($,$,$,$,$);"},
    });
}

}  // namespace
}  // namespace Ovik
