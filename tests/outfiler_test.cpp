// Writing: values, records, numbering, and the file around them.
#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <stdexcept>

#include "loadtext.h"
#include "ovik/ifc4.h"

namespace Ovik {
namespace {

using namespace Test;

class OutFiler : public ModelTest {
 protected:
    /// The arguments of one record that `write` writes, into a file that is written or saved.
    static std::string arguments(const std::function<void(IfcOutFiler&)>& write,
                                 bool isSaved = false) {
        const IfcModelPtr model = newModel();
        Probe::create(*model);
        Probe::onWrite = write;
        const std::string text = isSaved ? savedRecordsOf(*model) : recordsOf(*model);
        const std::string begin = "#1= IFCTESTPROBE(", end = ");\n";
        EXPECT_TRUE(text.starts_with(begin) && text.ends_with(end));
        return text.substr(begin.size(), text.size() - begin.size() - end.size());
    }
};

TEST_F(OutFiler, WritesEachKindOfValueAndNests) {
    using Item = IfcOutFiler::Item;
    EXPECT_EQ(arguments([](IfcOutFiler& out) {
                  out.writeReference(12);
                  out.writeReference(0);
                  { const Item empty(out); }
                  {
                      const Item outer(out);
                      {
                          const Item inner(out);
                          out.writeInt(std::numeric_limits<int>::min());
                          out.writeLogical(Logical());
                      }
                      const Item typed(out, "IFCLABEL");
                      out.writeString(XString(u"it's\u0416"));
                  }
                  out.writeDerived();
                  out.writeBinary(XBinary("2A5"));
                  out.writeString(XString());
                  out.writeEntity(nullptr);
              }),
              R"(#12,$,(),((-2147483648,.U.),IFCLABEL('it''s\X2\0416\X0\')),*,"2A5",'',$)");
}

TEST_F(OutFiler, WritesRealsWithSixteenDigitsUnlessIntegralAndSavesTheShortest) {
    const double infinity = std::numeric_limits<double>::infinity();
    struct Case {
        double value;
        const char* written;
        const char* saved;  // null if it is refused
    } const cases[] = {
        {0., "0.", "0."},
        {-0., "0.", "-0."},
        {1., "1.", "1."},
        {-3., "-3.", "-3."},
        {1e15, "1000000000000000.", "1000000000000000."},
        {9007199254740993., "9007199254740992.", "9007199254740992."},
        {1e-13, "0.", "1.E-13"},
        {-1e-13, "0.", "-1.E-13"},
        {1e-12, "0.", "1.E-12"},
        {2e-12, "2.000000000000000E-12", "2.E-12"},
        {2.0000000000001, "2.", "2.0000000000001"},
        {1.9999999999999, "1.999999999999900", "1.9999999999999"},
        {0.1, "0.1000000000000000", "0.1"},
        {-0.5, "-0.5000000000000000", "-0.5"},
        {1234.5, "1234.500000000000", "1234.5"},
        {123456789012345.6, "123456789012345.6", "123456789012345.6"},
        {1234567890123456.5, "1234567890123456.", "1234567890123456.5"},
        {1e-4, "0.0001000000000000000", "0.0001"},
        {9.9999999999999995e-5, "9.999999999999999E-05", "9.999999999999999E-05"},
        {9.99999999999999e-5, "9.999999999999990E-05", "9.99999999999999E-05"},
        {1e-7, "1.000000000000000E-07", "1.E-07"},
        {0.99999999999999996, "1.", "1."},
        {9223372036854774784., "9223372036854774784.", "9.223372036854775E+18"},
        {9223372036854775808., "9.223372036854776E+18", "9.223372036854776E+18"},
        {-9223372036854775808., "-9.223372036854776E+18", "-9.223372036854776E+18"},
        {1e100, "1.000000000000000E+100", "1.E+100"},
        {1e300, "1.000000000000000E+300", "1.E+300"},
        {5e-324, "0.", "5.E-324"},
        {infinity, "INF", nullptr},
        {-infinity, "-INF", nullptr},
        {std::numeric_limits<double>::quiet_NaN(), "NAN", nullptr},
        {-std::numeric_limits<double>::quiet_NaN(), "-NAN", nullptr},
        {-9999999999999998., "-9999999999999998.", "-9999999999999998."},
        {1e16, "10000000000000000.", "1.E+16"},
        {123e20, "1.230000000000000E+22", "1.23E+22"},
    };
    for (const Case& c : cases) {
        const auto write = [&](IfcOutFiler& out) { out.writeReal(c.value); };
        EXPECT_EQ(arguments(write), c.written);
        if (c.saved) {
            EXPECT_EQ(arguments(write, true), c.saved);
        }
    }
}

TEST_F(OutFiler, WritesAMillionBitPatternsLikeTheCFormatAndSavesTheSame) {
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

    std::erase_if(values, [](double value) { return !std::isfinite(value); });
    const std::string saved = arguments(
        [&](IfcOutFiler& out) {
            for (const double value : values) out.writeReal(value);
        },
        true);
    const auto numDigits = [](std::string_view text) {
        std::string digits;
        for (const char c : text.substr(0, text.find_first_of("Ee"))) {
            if (c >= '0' && c <= '9' && (c != '0' || !digits.empty())) digits += c;
        }
        return digits.find_last_not_of('0') + 1;
    };
    const char* at = saved.data();
    for (const double value : values) {
        double back = 0;
        const char* const end = std::from_chars(at, saved.data() + saved.size(), back).ptr;
        const std::string_view text(at, end);
        char shortest[32];
        const char* const stop =
            std::to_chars(shortest, std::end(shortest), value, std::chars_format::scientific).ptr;
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value)) << text;
        ASSERT_EQ(numDigits(text), numDigits({shortest, stop})) << text;
        ASSERT_NE(text.find('.'), text.npos) << text;
        at = end + 1;
    }
}

TEST_F(OutFiler, NumbersDepthFirstAndWritesInAscendingOrder) {
    // The first refers to later ones; two refer to each other; one writes no record.
    auto* const beam = make<IFC4::IfcBeam>();
    auto* const inner = make<IFC4::IfcLocalPlacement>();
    auto* const outer = make<IFC4::IfcLocalPlacement>();
    inner->setPlacementRelTo(outer);
    outer->setPlacementRelTo(inner);
    beam->setObjectPlacement(outer);
    Probe* const silent = make<Probe>();
    silent->ownWrite = [](IfcOutFiler&) {};
    Probe::onWrite = [&](IfcOutFiler& out) {
        out.writeEntity(silent);
        out.writeEntity(beam);
    };
    make<Probe>();
    const char expected[] =
        "#1= IFCBEAM('',$,$,$,$,#2,$,$,$);\n#2= IFCLOCALPLACEMENT(#3,$);\n"
        "#3= IFCLOCALPLACEMENT(#2,$);\n#4= IFCTESTPROBE($,#1);\n";
    EXPECT_EQ(recordsOf(*model_), expected);
    EXPECT_EQ(recordsOf(*model_), expected);  // nothing of a writing stays in the model
    EXPECT_EQ(beam->ifcId(), 0);
}

// An entity that writes no record of its own may write all the same.
TEST_F(OutFiler, ValuesOutsideOfRecordsStandWhereTheyCome) {
    struct Bare : Probe {
        explicit Bare(IfcModel& model) { addToModel(model); }
        void write(IfcOutFiler& out) const override { out.writeInt(7); }
    };
    for (int i = 0; i < 2; ++i) {
        make<Probe>();
        new Bare(*model_);
    }
    EXPECT_EQ(recordsOf(*model_), "#1= IFCTESTPROBE();\n7#2= IFCTESTPROBE();\n,7");
}

// References may lead to many more entities than the model has.
TEST_F(OutFiler, NumbersWhatIsReachedInOtherModels) {
    const IfcModelPtr other = newModel();
    auto* const line = make<IFC4::IfcPolyline>();
    std::string places, records;
    for (int i = 2; i < 1000; ++i) {
        line->getPoints().add(IFC4::IfcCartesianPoint::create(*other));
        places += (i > 2 ? ",#" : "#") + std::to_string(i);
        records += "#" + std::to_string(i) + "= IFCCARTESIANPOINT(());\n";
    }
    make<IFC4::IfcPolyline>()->setPoints(line->getPoints());
    EXPECT_EQ(recordsOf(*model_), "#1= IFCPOLYLINE((" + places + "));\n" + records +
                                      "#1000= IFCPOLYLINE((" + places + "));\n");
}

TEST_F(OutFiler, AnExceptionLeavesTheFilerSoundForTheNextRecord) {
    // Three entities: the first reaches the second, whose fields fail, and goes on.
    make<Probe>();
    Probe* const second = make<Probe>();
    make<Probe>();
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
    EXPECT_EQ(recordsOf(*model_),
              "#1= IFCTESTPROBE(1,10);\n#2= IFCTESTPROBE(2,());\n#3= IFCTESTPROBE(3);\n");
}

TEST_F(OutFiler, WritesTheWholeFile) {
    const TempFile file;
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
    EXPECT_TRUE(model_->write(file.path.wstring().c_str(), header));
    EXPECT_EQ(file.text(),
              "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('a ''b'''),'2;1');\n"
              "FILE_NAME('n\\S\\dme','2020-01-31T12:00:00',('au'),('or'),'pp','os','az');\n"
              "FILE_SCHEMA(('IFC4'));\nENDSEC;\n\nDATA;\n#1= ();\nENDSEC;\nEND-ISO-10303-21;\n");

    // A present text without characters is a time stamp too; an unset one gives the time of now ...
    header = IfcHeader();
    header.setTimeStamp(XString(u""));
    EXPECT_TRUE(newModel(eIFC2X3)->write(file.path, header));
    EXPECT_NE(file.text().find("FILE_DESCRIPTION((''),'2;1');\n"
                               "FILE_NAME('','',(''),(''),'','','');\n"
                               "FILE_SCHEMA(('IFC2X3'));\n"),
              std::string::npos);
    // ... in the zone of now.
    const auto nowPlus = [](int hours) {
        const std::time_t time = std::time(nullptr) + hours * 3600;
        char text[20];
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", std::gmtime(&time));
        return std::string(text);
    };
    for (const int hours : {-5, 7}) {
        ::setenv("TZ", ("ZONE" + std::to_string(-hours)).c_str(), 1);
        const std::string before = nowPlus(hours);
        EXPECT_TRUE(model_->write(file.path, IfcHeader()));
        const std::string text = file.text();
        const std::size_t at = text.find("FILE_NAME('','") + 14;
        const std::string stamp = text.substr(at, before.size());
        EXPECT_TRUE(before <= stamp && stamp <= nowPlus(hours)) << stamp;
        EXPECT_EQ(text.substr(at + before.size(), 5), "',(''");
    }
    ::unsetenv("TZ");

    EXPECT_FALSE(model_->write(std::filesystem::path("no/such/folder/out.ifc"), IfcHeader()));
    EXPECT_FALSE(model_->write(std::filesystem::path(), IfcHeader()));
}

}  // namespace
}  // namespace Ovik
