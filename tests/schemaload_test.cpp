// Records of both schemas through a whole load and out again: what is kept, what is repaired, the
// words of the log, and the records that are written.
#include <gtest/gtest.h>

#include "loadtext.h"
#include "ovik/ifc2x3/IfcCartesianPoint.h"
#include "ovik/ifc2x3/IfcColourRgb.h"
#include "ovik/ifc2x3/IfcEdge.h"
#include "ovik/ifc2x3/IfcGeometricRepresentationSubContext.h"
#include "ovik/ifc2x3/IfcOrientedEdge.h"
#include "ovik/ifc2x3/IfcTrimmedCurve.h"
#include "ovik/ifc2x3/IfcVertex.h"
#include "ovik/ifc4/IfcTrimmedCurve.h"

namespace Ovik {
namespace {

using namespace Test;

struct Case {
    const char* what;
    EIfcSchemaId schema;
    std::string records;
    std::string log;
    std::string written;  // the records of the model; none of them: all went
    bool lenient = true;
};

class SchemaLoad : public testing::Test {
 protected:
    void check(const std::vector<Case>& cases) {
        for (const Case& c : cases) {
            const Loaded loaded =
                loadRecords(files_, c.schema, c.records, {.lenient = c.lenient});
            EXPECT_EQ(loaded.log, c.log) << c.what;
            EXPECT_EQ(recordsOf(files_, *loaded.model), c.written.empty() ? kNone : c.written)
                << c.what;
        }
    }

    static constexpr const char* kNone = "#1= ();\n";  // the file of an empty model
    Files files_;
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

const std::string kGuid = "'0000000000000000000001'";

TEST_F(SchemaLoad, SelectsOfEntities) {
    const std::string actor = "#1=IFCACTOR(" + kGuid + ",$,$,$,$,";
    const std::string failedActor = failed(1, "IFCACTOR");
    check({
        {"the target stands later: the record is read again", eIFC4,
         actor + "#5);#5=IFCPERSON($,'f',$,$,$,$,$,$);", "",
         "#1= IFCACTOR(" + kGuid + ",$,$,$,$,#2);\n#2= IFCPERSON($,'f',$,$,$,$,$,$);\n"},
        {"the target never comes", eIFC4, actor + "#5);", failedActor, ""},
        {"the target is of no class of the select", eIFC4,
         actor + "#2);#2=IFCTABLEROW($,$);", failedActor, "#1= IFCTABLEROW($,$);\n"},
        {"no reference at all", eIFC4, actor + "'x');", failedActor, ""},
        {"no value", eIFC4, actor + "$);",
         "Ambiguous null reference in IFCACTORSELECT.\n" + failedActor, ""},
        {"an own entity, and one of the select that is a choice", eIFC2X3,
         "#1=IFCFILLAREASTYLE($,(#3,#2));#2=IFCCOLOURRGB($,1.,0.,0.5);"
         "#3=IFCDRAUGHTINGPREDEFINEDCOLOUR('red');",
         "",
         "#1= IFCFILLAREASTYLE($,(#2,#3));\n#2= IFCDRAUGHTINGPREDEFINEDCOLOUR('red');\n"
         "#3= IFCCOLOURRGB($,1.,0.,0.5);\n"},
        {"no value, asked of both", eIFC2X3, "#1=IFCFILLAREASTYLE($,($));",
         "Ambiguous null reference in IFCFILLSTYLESELECT.\n"
         "Ambiguous null reference in IFCCOLOUR.\n" +
             failed(1, "IFCFILLAREASTYLE"),
         ""},
        {"one entity beside a select of others", eIFC4,
         "#1=IFCCURVESTYLE($,#3,$,$,$);#2=IFCCURVESTYLE($,#4,$,$,$);"
         "#3=IFCDRAUGHTINGPREDEFINEDCURVEFONT('f');"
         "#4=IFCCURVESTYLEFONTANDSCALING($,#3,1.);",
         "",
         "#1= IFCCURVESTYLE($,#2,$,$,$);\n#2= IFCDRAUGHTINGPREDEFINEDCURVEFONT('f');\n"
         "#3= IFCCURVESTYLE($,#4,$,$,$);\n#4= IFCCURVESTYLEFONTANDSCALING($,#2,1.);\n"},
        {"lists before the select and around it are not doubled", eIFC2X3,
         "#1=IFCDOCUMENTREFERENCE($,$,'r');#4=IFCPERSON($,$,$,$,$,$,$,$);"
         "#2=IFCDOCUMENTINFORMATION('i','n',$,(#1),$,$,$,$,#5,(#4,#5),$,$,$,$,$,$,$);"
         "#5=IFCORGANIZATION($,'o',$,$,$);",
         "",
         "#1= IFCDOCUMENTREFERENCE($,$,'r');\n"
         "#2= IFCDOCUMENTINFORMATION('i','n',$,(#1),$,$,$,$,#3,(#4,#3),$,$,$,$,$,$,$);\n"
         "#3= IFCORGANIZATION($,'o',$,$,$);\n#4= IFCPERSON($,$,$,$,$,$,$,$);\n"},
    });
}

TEST_F(SchemaLoad, SelectsWithValues) {
    // A trimming select has one entity choice: it takes any reference, and validating judges it.
    const std::string line =
        "#2=IFCCARTESIANPOINT((0.,0.));#3=IFCCARTESIANPOINT((1.,0.));#4=IFCPOLYLINE((#2,#3));";
    const std::string trimmed = "#5=IFCTRIMMEDCURVE(#4,";
    const std::string rest = ",(IFCPARAMETERVALUE(1.)),.T.,.PARAMETER.);";
    const std::string points =
        "#1= IFCCARTESIANPOINT((0.,0.));\n#2= IFCCARTESIANPOINT((1.,0.));\n"
        "#3= IFCPOLYLINE((#1,#2));\n";
    const auto curve = [&](const std::string& trim) {
        return points + "#4= IFCTRIMMEDCURVE(#3," + trim +
               ",(IFCPARAMETERVALUE(1.)),.T.,.PARAMETER.);\n";
    };
    const std::string failedCurve = failed(5, "IFCTRIMMEDCURVE");
    std::vector<Case> cases;
    for (const EIfcSchemaId schema : {eIFC2X3, eIFC4}) {
        cases.push_back({"both kinds", schema, line + trimmed + "(#3,IFCPARAMETERVALUE(0.5))" + rest,
                         "", curve("(#2,IFCPARAMETERVALUE(0.5))")});
        cases.push_back({"a record that is not there, and one of another class", schema,
                         line + trimmed + "(#9,IFCPARAMETERVALUE(0.5))" + rest +
                             "#6=IFCTRIMMEDCURVE(#4,(#4)" + rest,
                         badMember("Trim1", 6) + removed(6), curve("(IFCPARAMETERVALUE(0.5))")});
        cases.push_back({"an element without value is left out", schema,
                         line + trimmed + "($,IFCPARAMETERVALUE(0.5))" + rest,
                         "Ambiguous null reference in IFCTRIMMINGSELECT.\n" + invalidType(0),
                         curve("(IFCPARAMETERVALUE(0.5))")});
        cases.push_back({"and fails the list when nothing remains", schema,
                         line + trimmed + "(0.5,IFCPARAMETERVALUE(1))" + rest,
                         invalidType(0) + invalidType(0) + "Failed to read IFCPARAMETERVALUE.\n" +
                             failedCurve,
                         points});
        cases.push_back({"too many", schema, line + trimmed + "(#2,#3,#2)" + rest,
                         "\nItem 1: invalid array size 3, expected at most 2\n" + failedCurve,
                         points});
    }
    check(cases);

    const std::string style = "#1=IFCPRESENTATIONSTYLEASSIGNMENT((IFCNULLSTYLE(.NULL.)));";
    const std::string styleOut = "#1= IFCPRESENTATIONSTYLEASSIGNMENT((IFCNULLSTYLE(.NULL.)));\n";
    const std::string sets = "#1=IFCPROPERTYSET(" + kGuid + ",$,$,$,(#2));#2=IFCCOMPLEXPROPERTY(" +
                             "'c',$,'u',(#3));#3=IFCPROPERTYSINGLEVALUE('p',$,$,$);";
    const std::string wall = "#4=IFCWALL(" + kGuid + ",$,$,$,$,$,$,$,$);";
    check({
        {"an enumeration as choice", eIFC2X3, style, "", styleOut},
        {"an enumeration as choice", eIFC4, style, "", styleOut},
        {"an aggregate as choice, and a nested one of numbers", eIFC4,
         sets + wall + "#5=IFCRELDEFINESBYPROPERTIES(" + kGuid +
             ",$,$,$,(#4),IFCPROPERTYSETDEFINITIONSET((#1)));"
             "#6=IFCINDEXEDPOLYCURVE(#7,(IFCLINEINDEX((1,2)),IFCARCINDEX((2,3,1)),IFCARCINDEX((2,3"
             "))),$);#7=IFCCARTESIANPOINTLIST2D(((0.,0.),(1.,0.)));",
         "\nItem 0: invalid array size 2, expected at least 3\nFailed to read IFCARCINDEX.\n",
         "#1= IFCPROPERTYSET(" + kGuid +
             ",$,$,$,(#2));\n#2= IFCCOMPLEXPROPERTY('c',$,'u',(#3));\n"
             "#3= IFCPROPERTYSINGLEVALUE('p',$,$,$);\n#4= IFCWALL(" +
             kGuid + ",$,$,$,$,$,$,$,$);\n#5= IFCRELDEFINESBYPROPERTIES(" + kGuid +
             ",$,$,$,(#4),IFCPROPERTYSETDEFINITIONSET((#1)));\n"
             "#6= IFCINDEXEDPOLYCURVE(#7,(IFCLINEINDEX((1,2)),IFCARCINDEX((2,3,1))),$);\n"
             "#7= IFCCARTESIANPOINTLIST2D(((0.,0.),(1.,0.)));\n"},
        {"a single entity choice is not judged before validating", eIFC4,
         "#1=IFCFILLAREASTYLEHATCHING(#2,#9,$,$,0.);#2=IFCCURVESTYLE($,$,$,$,$);"
         "#3=IFCFILLAREASTYLEHATCHING(#2,IFCPOSITIVELENGTHMEASURE(2.),$,$,0.);",
         badMember("StartOfNextHatchLine", 1) + removed(1),
         "#1= IFCCURVESTYLE($,$,$,$,$);\n"
         "#2= IFCFILLAREASTYLEHATCHING(#1,IFCPOSITIVELENGTHMEASURE(2.),$,$,0.);\n"},
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
        {"IFCREAL(0.5)", ""},
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
        cases.push_back({value.text, value.text[3] == 'T' && value.text[7] == 'S' ? eIFC4 : eIFC2X3,
                         "#1=IFCPROPERTYSINGLEVALUE" + arguments,
                         value.log + (fails ? failed(1, "IFCPROPERTYSINGLEVALUE") : ""),
                         fails ? "" : "#1= IFCPROPERTYSINGLEVALUE" + arguments + "\n",
                         value.lenient});
        cases.push_back(cases.back());
        cases.back().schema = eIFC4;
    }
    cases[22] = cases[20];
    check(cases);
    check({{"names in any case, and a missing text", eIFC4,
            "#1=IFCPROPERTYLISTVALUE('p',$,(IfcLabel($),IFCLABEL('b'),3),$);", 
            invalidType(2) + invalidType(2) + invalidType(2),
            "#1= IFCPROPERTYLISTVALUE('p',$,(IFCLABEL(''),IFCLABEL('b')),$);\n"}});
}
