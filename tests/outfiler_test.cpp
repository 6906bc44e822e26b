// Writing: values, records, numbering, and the file around them.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <stdexcept>

#include "testclasses.h"

namespace Ovik {
namespace {

using namespace Test;

class OutFiler : public testing::Test {
 protected:
    void SetUp() override { Probe::reset(); }

    /// The data section of the model's file, without the lines around it.
    std::string data(const IfcModel& model) {
        EXPECT_TRUE(model.write(files_.path("out.ifc"), IfcHeader()));
        const std::string text = files_.text("out.ifc");
        const std::string begin = "\n\nDATA;\n", end = "ENDSEC;\nEND-ISO-10303-21;\n";
        const std::size_t from = text.find(begin) + begin.size();
        EXPECT_EQ(text.substr(text.size() - end.size()), end);
        return text.substr(from, text.size() - end.size() - from);
    }
    std::string data() { return data(*model_); }

    /// The arguments of one record that `write` writes.
    std::string arguments(const std::function<void(IfcOutFiler&)>& write) {
        const ModelPtr model = newModel();
        Probe::create(*model);
        Probe::onWrite = write;
        const std::string text = data(*model);
        const std::string begin = "#1= IFCTESTPROBE(", end = ");\n";
        EXPECT_EQ(text.substr(0, begin.size()), begin);
        EXPECT_EQ(text.substr(text.size() - end.size()), end);
        return text.substr(begin.size(), text.size() - begin.size() - end.size());
    }
    std::string real(double value) {
        return arguments([=](IfcOutFiler& out) { out.writeReal(value); });
    }

    Leaf* leaf(const char16_t* name) {
        Leaf* const entity = Leaf::create(*model_);
        entity->name = XString(name);
        return entity;
    }
    Node* node(const char16_t* name) {
        Node* const entity = Node::create(*model_);
        entity->name = XString(name);
        return entity;
    }

    Files files_;
    ModelPtr model_ = newModel();
};

TEST_F(OutFiler, WritesEachKindOfValue) {
    Base64Guid guid = Base64Guid::testGuid();
    EXPECT_EQ(arguments([&](IfcOutFiler& out) {
                  out.writeNull();
                  out.writeDerived();
                  out.writeReference(12);
                  out.writeReference(0);
                  out.writeEnum("NOTDEFINED");
                  out.writeBool(true);
                  out.writeBool(false);
                  out.writeLogical(Logical(true));
                  out.writeLogical(Logical(false));
                  out.writeLogical(Logical());
                  out.writeInt(std::numeric_limits<int>::min());
                  out.writeInt(0);
                  out.writeInt(1234567);
                  out.writeEntity(nullptr);
              }),
              "$,*,#12,$,.NOTDEFINED.,.T.,.F.,.T.,.F.,.U.,-2147483648,0,1234567,$");
    EXPECT_EQ(arguments([&](IfcOutFiler& out) {
                  out.writeString(XString());
                  out.writeString(XString(u""));
                  out.writeString(XString(u"it's\u0416"));
                  out.writeString(XString::decode("\\X2\\00E4\\X0\\"));
                  out.writeGuid(guid);
                  out.writeBinary(XBinary());
                  out.writeBinary(XBinary("2A5"));
              }),
              R"('','','it''s\X2\0416\X0\','\X2\00E4\X0\','_dummy_GUID_dummy_GIUD',"0","2A5")");
}

TEST_F(OutFiler, ListsAndTypedValuesNest) {
    using Item = IfcOutFiler::Item;
    EXPECT_EQ(arguments([](IfcOutFiler& out) {
                  { const Item empty(out); }
                  {
                      const Item outer(out);
                      {
                          const Item inner(out);
                          out.writeInt(1);
                          out.writeInt(2);
                      }
                      const Item typed(out, "IFCLENGTHMEASURE");
                      out.writeReal(2);
                  }
                  out.writeInt(3);
                  const Item typed(out, "IFCBOOLEAN");
                  out.writeBool(true);
              }),
              "(),((1,2),IFCLENGTHMEASURE(2.)),3,IFCBOOLEAN(.T.)");
}

TEST_F(OutFiler, WritesRealsWithSixteenDigitsUnlessIntegral) {
    const double infinity = std::numeric_limits<double>::infinity();
    const struct {
        double value;
        const char* text;
    } cases[] = {
        {0., "0."},
        {-0., "0."},
        {1., "1."},
        {-3., "-3."},
        {1e15, "1000000000000000."},
        {9007199254740993., "9007199254740992."},
        {1e-13, "0."},
        {-1e-13, "0."},
        {1e-12, "0."},
        {2e-12, "2.000000000000000E-12"},
        {2.0000000000001, "2."},
        {1.9999999999999, "1.999999999999900"},
        {0.1, "0.1000000000000000"},
        {-0.5, "-0.5000000000000000"},
        {1234.5, "1234.500000000000"},
        {123456789012345.6, "123456789012345.6"},
        {1e-4, "0.0001000000000000000"},
        {9.9999999999999995e-5, "9.999999999999999E-05"},
        {9.99999999999999e-5, "9.999999999999990E-05"},
        {1e-7, "1.000000000000000E-07"},
        {0.99999999999999996, "1."},
        {9223372036854774784., "9223372036854774784."},
        {9223372036854775808., "9.223372036854776E+18"},
        {-9223372036854775808., "-9.223372036854776E+18"},
        {1e100, "1.000000000000000E+100"},
        {1e300, "1.000000000000000E+300"},
        {5e-324, "0."},
        {infinity, "INF"},
        {-infinity, "-INF"},
        {std::numeric_limits<double>::quiet_NaN(), "NAN"},
        {-std::numeric_limits<double>::quiet_NaN(), "-NAN"},
    };
    for (const auto& c : cases) EXPECT_EQ(real(c.value), c.text);
}

TEST_F(OutFiler, WritesAMillionBitPatternsLikeTheCFormat) {
    std::mt19937_64 generator(7);
    std::vector<double> values;
    for (int i = 0; i < 1000000; ++i) {
        // Any bits at all, and numbers of the magnitudes that files have.
        const auto bits = generator();
        values.push_back(i % 2 ? std::bit_cast<double>(bits)
                               : std::ldexp(static_cast<double>(static_cast<std::int64_t>(bits)),
                                            -static_cast<int>(generator() % 80)));
    }
    std::string expected;
    for (const double value : values) {
        double whole = 0;
        const double fraction = std::modf(value, &whole);
        char buffer[64];
        if (fraction >= -1e-12 && fraction <= 1e-12 && std::fabs(whole) < 9223372036854775808.0) {
            std::snprintf(buffer, sizeof buffer, "%lld.", static_cast<long long>(whole));
        } else {
            std::snprintf(buffer, sizeof buffer, "%#.16G", value);
        }
        expected += (expected.empty() ? "" : ",") + std::string(buffer);
    }
    const std::string written = arguments([&](IfcOutFiler& out) {
        for (const double value : values) out.writeReal(value);
    });
    EXPECT_TRUE(written == expected);  // not shown: some 20 MB
}

TEST_F(OutFiler, NumbersDepthFirstAndWritesInAscendingOrder) {
    // The first refers to later ones; `d` is reached twice; `a` and `b` refer to each other.
    Node* const a = node(u"a");
    Node* const b = node(u"b");
    Leaf* const c = leaf(u"c");
    Leaf* const d = leaf(u"d");
    Node* const e = node(u"e");
    leaf(u"f");
    a->requiredId = d->id();
    a->otherId = b->id();
    a->items = {c->id(), EntityId(), d->id()};
    b->requiredId = e->id();
    b->otherId = a->id();
    e->requiredId = d->id();
    const char expected[] =
        "#1= IFCTESTNODE('a',#2,#3,(#5,$,#2));\n"
        "#2= IFCTESTLEAF('d');\n"
        "#3= IFCTESTNODE('b',#4,#1,());\n"
        "#4= IFCTESTNODE('e',#2,$,());\n"
        "#5= IFCTESTLEAF('c');\n"
        "#6= IFCTESTLEAF('f');\n";
    EXPECT_EQ(data(), expected);
    EXPECT_EQ(data(), expected);  // nothing of a writing stays in the model
    EXPECT_EQ(a->ifcId(), 0);
}

TEST_F(OutFiler, AnEntityThatWritesNoRecordIsANullReference) {
    class Silent : public Leaf {
     public:
        static Silent* create(IfcModel& model) { return make<Silent>(model); }
        void write(IfcOutFiler&) const override {}
    };
    Node* const a = node(u"a");
    a->requiredId = Silent::create(*model_)->id();
    EXPECT_EQ(data(), "#1= IFCTESTNODE('a',$,$,());\n");
}

TEST_F(OutFiler, AChainOfAMillionReferencesIsWritten) {
    constexpr int kLength = 1000000;
    model_->reserve(kLength);
    Node* previous = node(u"");
    for (int i = 1; i < kLength; ++i) {
        Node* const next = node(u"");
        previous->otherId = next->id();
        previous = next;
    }
    const std::string text = data();
    EXPECT_EQ(text.substr(0, 27), "#1= IFCTESTNODE('',$,#2,())");
    const std::string end =
        "#999999= IFCTESTNODE('',$,#1000000,());\n#1000000= IFCTESTNODE('',$,$,());\n";
    ASSERT_GT(text.size(), end.size());
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST_F(OutFiler, AnExceptionLeavesTheFilerSoundForTheNextRecord) {
    // Three entities: the first reaches the second, whose fields fail, and goes on.
    Probe::create(*model_);
    Probe* const second = Probe::create(*model_);
    Probe::create(*model_);
    int calls = 0;
    Probe::onWrite = [&](IfcOutFiler& out) {
        const int call = ++calls;
        out.writeInt(call);
        if (call == 2) {
            const IfcOutFiler::Item list(out);
            throw std::runtime_error("broken");
        }
        if (call == 1) {
            EXPECT_THROW(out.writeEntity(second), std::runtime_error);
            out.writeInt(10);
        }
    };
    EXPECT_EQ(data(), "#1= IFCTESTPROBE(1,10);\n#2= IFCTESTPROBE(2,());\n#3= IFCTESTPROBE(3);\n");
}

TEST_F(OutFiler, WritesTheWholeFile) {
    IfcHeader header;
    header.setFileDescription(XString(u"a 'b'"));
    header.setFileName(XString(u"n\u00e4me"));
    header.setTimeStamp(XString(u"2020-01-31T12:00:00"));
    header.setAuthor(XString(u"au"));
    header.setOrganization(XString(u"or"));
    header.setPreprocessorVersion(XString(u"pp"));
    header.setOriginatingSystem(XString(u"os"));
    header.setAuthorization(XString(u"az"));
    header.setFileSchema(XString(u"IFC99"));
    EXPECT_TRUE(model_->write(files_.path("out.ifc").wstring().c_str(), header));
    EXPECT_EQ(files_.text("out.ifc"),
              "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('a ''b'''),'2;1');\n"
              "FILE_NAME('n\\S\\dme','2020-01-31T12:00:00',('au'),('or'),'pp','os','az');\n"
              "FILE_SCHEMA(('IFC4'));\nENDSEC;\n\nDATA;\n#1= ();\nENDSEC;\nEND-ISO-10303-21;\n");

    // A present text without characters is a time stamp too; an unset one gives the time of now.
    header = IfcHeader();
    header.setTimeStamp(XString(u""));
    EXPECT_TRUE(newModel(eIFC2X3)->write(files_.path("out.ifc"), header));
    EXPECT_NE(files_.text("out.ifc").find("FILE_DESCRIPTION((''),'2;1');\n"
                                          "FILE_NAME('','',(''),(''),'','','');\n"
                                          "FILE_SCHEMA(('IFC2X3'));\n"),
              std::string::npos);
    EXPECT_TRUE(model_->write(files_.path("out.ifc"), IfcHeader()));
    const std::string text = files_.text("out.ifc");
    const std::size_t at = text.find("FILE_NAME('','") + 14;
    EXPECT_EQ(text.substr(at + 19, 5), "',(''");
    for (const auto& [place, mark] :
         {std::pair(4, '-'), {7, '-'}, {10, 'T'}, {13, ':'}, {16, ':'}}) {
        EXPECT_EQ(text[at + static_cast<std::size_t>(place)], mark);
    }
}

TEST_F(OutFiler, TellsAFileThatCantBeOpened) {
    EXPECT_FALSE(model_->write(files_.path("no/such/folder/out.ifc"), IfcHeader()));
    EXPECT_FALSE(model_->write(files_.path(""), IfcHeader()));
}

}  // namespace
}  // namespace Ovik
