// The command-line tool and the demo from outside: exit statuses, what goes to which stream, and
// what becomes of the files.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

namespace {

namespace fs = std::filesystem;

const std::string kHeader =
    "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION(('A \\S\\d'),'2;1');\n"
    "FILE_NAME('n.ifc','2020-01-31T12:00:00',('Ann'),('Org'),'pre','sys','auth');\n";
const std::string kEnd = "ENDSEC;\nEND-ISO-10303-21;\n";

std::string fileText(const std::string& schema, const std::string& records) {
    return kHeader + "FILE_SCHEMA(('" + schema + "'));\nENDSEC;\nDATA;\n" + records + kEnd;
}

const std::string kPoint = "#7=IFCCARTESIANPOINT((1.,2.5));\n";
const std::string kGood =
    fileText("IFC4", "#3=IFCDIRECTION((0.,1.));\n" + kPoint + "#9=IFCCARTESIANPOINT((3.,4.));\n");

std::string readFile(const fs::path& file) {
    std::ifstream stream(file);
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

std::size_t count(const std::string& text, const std::string& piece) {
    std::size_t number = 0;
    for (std::size_t at = text.find(piece); at != std::string::npos; ++number)
        at = text.find(piece, at + piece.size());
    return number;
}

class ToolTest : public ::testing::Test {
 protected:
    struct Outcome {
        int status;
        std::string out;
        std::string err;
    };

    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = fs::path(::testing::TempDir()) /
                  ("ovik-tool-" + std::to_string(::getpid()) + info->name());
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    void make(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ / name) << text;
    }
    std::string text(const std::string& name) const { return readFile(folder_ / name); }

    /// Runs the tool in the test's folder, with the words of `arguments` as the shell sees them,
    /// behind what the shell shall do `before`.
    Outcome run(const std::string& arguments, const std::string& program = OVIK_TOOL,
                const std::string& before = {}) const {
        const std::string command = "cd '" + folder_.string() + "' && " + before + " '" + program +
                                    "' " + arguments + " >stdout 2>stderr </dev/null";
        const int status = std::system(command.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text("stdout"), text("stderr")};
    }

    fs::path folder_;
};

TEST_F(ToolTest, BadUsage) {
    make("a.ifc", kGood);
    for (const char* arguments : {"",
                                  "frobnicate a.ifc",
                                  "copy",
                                  "copy a.ifc",
                                  "copy a.ifc b.ifc c.ifc",
                                  "copy a.ifc b.ifc --frob",
                                  "copy a.ifc b.ifc --tolerance 1",
                                  "copy a.ifc b.ifc --log",
                                  "compare a.ifc",
                                  "compare a.ifc a.ifc --tolerance",
                                  "compare a.ifc a.ifc --tolerance x",
                                  "compare a.ifc a.ifc --tolerance -1",
                                  "compare a.ifc a.ifc --tolerance 1e",
                                  "compare a.ifc a.ifc --tolerance nan",
                                  "compare a.ifc a.ifc --strict",
                                  "info",
                                  "info a.ifc a.ifc",
                                  "info a.ifc --plain",
                                  "copy a.ifc b.ifc --strict",
                                  "copy a.ifc b.ifc --plain --renumber",
                                  "copy a.ifc b.ifc --plain --lossless",
                                  "check a.ifc --log l",
                                  "tree a.ifc --html",
                                  "show",
                                  "show a.ifc",
                                  "show a.ifc a.ifc",
                                  "show a.ifc 0",
                                  "show a.ifc 7 -1",
                                  "show a.ifc 7x"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.out, "") << arguments;
        EXPECT_NE(outcome.err.find("usage: ovik copy IN OUT"), std::string::npos) << arguments;
    }
    EXPECT_FALSE(fs::exists(folder_ / "b.ifc"));
    for (const char* arguments : {"--help", "-h", "info --help", "copy a.ifc b.ifc -h"}) {
        const Outcome help = run(arguments);
        EXPECT_EQ(help.status, 0) << arguments;
        EXPECT_EQ(help.out.find("usage: ovik copy IN OUT"), 0u) << arguments;
        EXPECT_EQ(help.err, "") << arguments;
    }
    EXPECT_FALSE(fs::exists(folder_ / "b.ifc"));
}

TEST_F(ToolTest, NoModelLeavesTheOutputAlone) {
    make("schema.ifc", fileText("IFC4X3", kPoint));
    make("header.ifc", "ISO-10303-21;\nHEADER;\nENDSEC;\nDATA;\n" + kPoint + kEnd);
    make("empty.ifc", "");
    make("zeros.ifc", std::string(5000, '\0'));
    fs::create_directory(folder_ / "folder");
    const std::pair<const char*, const char*> kCases[] = {
        {"missing.ifc", "No such file or directory"},
        {"folder", "is a directory"},
        {"empty.ifc", "is not a STEP physical file, or its header is broken at line 1, column 1"},
        {"zeros.ifc", "is not a STEP physical file, or its header is broken at line 1, column 1"},
        {"header.ifc", "is not a STEP physical file, or its header is broken at line 3, column 1"},
        {"schema.ifc", "its schema is not IFC2X3 or IFC4, but IFC4X3"},
    };
    make("out.ifc", "precious");
    for (const auto& [file, cause] : kCases) {
        const std::string message = std::string("ovik: ") + file + ": " + cause + "\n";
        for (const std::string& arguments :
             {std::string("copy ") + file + " out.ifc", std::string("info ") + file,
              std::string("tree --html out.ifc ") + file}) {
            const Outcome outcome = run(arguments);
            EXPECT_EQ(outcome.status, 1) << arguments;
            EXPECT_EQ(outcome.err, message) << arguments;
            EXPECT_EQ(outcome.out, "") << arguments;
        }
        EXPECT_EQ(text("out.ifc"), "precious") << file;
    }
}

// What comes through a pipe can be read only once.
TEST_F(ToolTest, PipesAsInput) {
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    const auto runWith = [this](const std::string& arguments, const std::string& text) {
        std::thread writer([&] { std::ofstream(folder_ / "pipe") << text; });
        const Outcome outcome = run(arguments);
        writer.join();
        return outcome;
    };
    const Outcome good = runWith("copy pipe out.ifc", kGood);
    EXPECT_EQ(good.status, 0) << good.err;
    const std::pair<std::string, const char*> cases[] = {
        {fileText("IFC4X3", kPoint), "its schema is not IFC2X3 or IFC4, but IFC4X3\n"},
        {"nonsense", "is not a STEP physical file, or its header is broken at line 1, column 1\n"}};
    for (const auto& [bad, cause] : cases) {
        for (const char* arguments : {"info pipe", "copy pipe out.ifc"}) {
            const Outcome outcome = runWith(arguments, bad);
            EXPECT_EQ(outcome.status, 1) << arguments;
            EXPECT_EQ(outcome.err, std::string("ovik: pipe: ") + cause) << arguments;
        }
    }
    EXPECT_NE(text("out.ifc").find("#9= IFCCARTESIANPOINT"), std::string::npos);
}

TEST_F(ToolTest, CopySavesTheModelWithItsHeader) {
    make("a.ifc", kGood);
    const std::string head = kHeader + "FILE_SCHEMA(('IFC4'));\nENDSEC;\n\nDATA;\n";
    const struct {
        const char* options;
        const char* records;
    } cases[] = {
        {"",
         "#3= IFCDIRECTION((0.,1.));\n#7= IFCCARTESIANPOINT((1.,2.5));\n"
         "#9= IFCCARTESIANPOINT((3.,4.));\n"},
        {"--renumber",
         "#1= IFCDIRECTION((0.,1.));\n#2= IFCCARTESIANPOINT((1.,2.5));\n"
         "#3= IFCCARTESIANPOINT((3.,4.));\n"},
        {"--plain",
         "#1= IFCDIRECTION((0.,1.));\n#2= IFCCARTESIANPOINT((1.,2.500000000000000));\n"
         "#3= IFCCARTESIANPOINT((3.,4.));\n"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = run(std::string("copy a.ifc --log log.txt b.ifc ") + c.options);
        EXPECT_EQ(outcome.status, 0) << c.options;
        EXPECT_EQ(outcome.out, "b.ifc: 3 entities of IFC4 written\n") << c.options;
        EXPECT_EQ(outcome.err, "") << c.options;  // no bar without a terminal
        EXPECT_FALSE(fs::exists(folder_ / "log.txt")) << c.options;
        EXPECT_EQ(text("b.ifc"), head + c.records + kEnd) << c.options;
    }
    EXPECT_EQ(run("-c '" OVIK_TOOL " info a.ifc > /dev/full'", "/bin/sh").status, 2);
}

// Whatever name it goes by, a file that is written is named once, and none is touched if not.
TEST_F(ToolTest, NoFileIsWrittenTwice) {
    make("a.ifc", kGood);
    make("b.ifc", "precious");
    fs::create_hard_link(folder_ / "a.ifc", folder_ / "hard.ifc");
    fs::create_symlink("a.ifc", folder_ / "soft.ifc");
    fs::create_symlink("nothing.ifc", folder_ / "dangling.ifc");
    for (const char* arguments :
         {"copy a.ifc a.ifc", "copy a.ifc ./a.ifc", "copy a.ifc hard.ifc", "copy soft.ifc a.ifc",
          "copy a.ifc b.ifc --log a.ifc", "copy a.ifc b.ifc --log b.ifc",
          "copy a.ifc dangling.ifc --log nothing.ifc", "compare a.ifc b.ifc --log hard.ifc",
          "info a.ifc --log soft.ifc", "tree a.ifc --html hard.ifc",
          "tree a.ifc --html page --log page", "show a.ifc 7 --log a.ifc"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_EQ(outcome.out, "") << arguments;
        EXPECT_EQ(count(outcome.err, "\n"), 1u) << outcome.err;
        EXPECT_EQ(text("a.ifc"), kGood) << arguments;
        EXPECT_EQ(text("b.ifc"), "precious") << arguments;
    }
    EXPECT_FALSE(fs::exists(folder_ / "nothing.ifc"));
    EXPECT_EQ(run("copy a.ifc /dev/null --log /dev/null").status, 0);
}

TEST_F(ToolTest, TellsWhatIsNotKept) {
    make("a.ifc", fileText("IFC4", kPoint + "#8=IFCNOSUCHTHING();\n#9=IFCPOLYLINE((#7,#99));\n"));
    const std::string lost = "ovik: a.ifc: 1 of 3 records and 1 value not kept";
    const Outcome silent = run("copy a.ifc b.ifc");
    EXPECT_EQ(silent.status, 0);
    EXPECT_EQ(silent.err, lost + "; --log FILE tells why\n");
    EXPECT_EQ(text("b.ifc").find("#8"), std::string::npos);
    EXPECT_NE(text("b.ifc").find("#9= IFCPOLYLINE((#7));"), std::string::npos);
    for (const char* command : {"copy a.ifc b.ifc", "info a.ifc", "tree a.ifc", "show a.ifc 7"}) {
        const Outcome logged = run(std::string(command) + " --log log.txt");
        EXPECT_EQ(logged.err.find(lost + "\n"), 0u) << command << logged.err;
        EXPECT_EQ(count(text("log.txt"), "\n"), 2u) << command;
        EXPECT_EQ(text("log.txt").find("line 9: #8"), 0u) << text("log.txt");
    }
    make("b.ifc", "precious");
    EXPECT_EQ(run("copy a.ifc b.ifc --lossless").status, 3);
    EXPECT_EQ(text("b.ifc"), "precious");
    EXPECT_EQ(run("copy a.ifc b.ifc --log nowhere/log.txt").err,
              lost + "\novik: nowhere/log.txt: the log can't be written\n");

    make("cut.ifc", kGood.substr(0, kGood.size() - 18));
    EXPECT_EQ(run("info cut.ifc").err,
              "ovik: cut.ifc: does not end with END-ISO-10303-21;; --log FILE tells why\n");
}

TEST_F(ToolTest, CheckGroupsFaultsByCause) {
    make("good.ifc", kGood);
    const Outcome good = run("check good.ifc");
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.out,
              "exact: 3 of 3 records, nothing lost\nplain: 3 of 3 records, nothing lost\n");
    make("a.ifc", fileText("IFC4", kPoint + "#8=IFCNOSUCHTHING();\n#9=IFCNOSUCHTHING();\n"));
    const Outcome text = run("check a.ifc");
    EXPECT_EQ(text.status, 3);
    EXPECT_NE(text.out.find("unknown class IFCNOSUCHTHING (2)\n    line 9 #8\n    line 10 #9\n"),
              std::string::npos)
        << text.out;
    const Outcome json = run("check a.ifc --json");
    EXPECT_EQ(json.status, 3);
    EXPECT_NE(json.out.find(R"({"line": 9, "number": 8, "class": "", "attribute": ""})"),
              std::string::npos)
        << json.out;
    EXPECT_EQ(count(json.out, "{"), count(json.out, "}"));
    EXPECT_EQ(count(json.out, "["), count(json.out, "]"));
    make("empty.ifc", "");
    EXPECT_EQ(run("check empty.ifc").status, 1);
}

TEST_F(ToolTest, PlainCopyLenientAndStrict) {
    // A missing item is a fault that a lenient load repairs and a strict one drops the record for.
    make("a.ifc", fileText("IFC4", kPoint + "#8=IFCPERSON($,,$,$,$,$,$,$);\n"));
    EXPECT_EQ(run("copy a.ifc lenient.ifc --log lenient.txt --plain").out,
              "lenient.ifc: 2 entities of IFC4 written\n");
    EXPECT_EQ(run("copy --strict a.ifc strict.ifc --plain --log strict.txt").out,
              "strict.ifc: 1 entities of IFC4 written\n");
    EXPECT_NE(text("lenient.txt").find("missing item is replaced with NIL"), std::string::npos);
    EXPECT_NE(text("strict.txt").find("missing list item"), std::string::npos);
}

TEST_F(ToolTest, CopyToAnUnwritablePath) {
    make("a.ifc", kGood);
    fs::create_directory(folder_ / "folder");
    const Outcome missing = run("copy a.ifc nowhere/b.ifc");
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.err, "ovik: nowhere/b.ifc: No such file or directory\n");
    // What breaks off half-way, as on a full disk: here a file may have two blocks of 512 bytes.
    std::string records;
    for (int i = 1; i < 100; ++i) records += "#" + std::to_string(i) + kPoint.substr(2);
    make("big.ifc", fileText("IFC4", records));
    const Outcome full = run("copy big.ifc b.ifc", OVIK_TOOL, "trap '' XFSZ && ulimit -f 2 &&");
    EXPECT_EQ(full.status, 2);
    EXPECT_EQ(full.err, "ovik: b.ifc: File too large\n");
    EXPECT_FALSE(fs::exists(folder_ / "b.ifc"));
    EXPECT_EQ(run("copy --plain big.ifc b.ifc", OVIK_TOOL, "trap '' XFSZ && ulimit -f 2 &&").err,
              "ovik: b.ifc: can't be written completely\n");
    const Outcome folder = run("copy a.ifc folder");
    EXPECT_EQ(folder.status, 2);
    EXPECT_EQ(folder.err, "ovik: folder: Is a directory\n");
    EXPECT_EQ(folder.out, "");
}

TEST_F(ToolTest, Compare) {
    make("a.ifc", fileText("IFC4", kPoint));
    make("near.ifc", fileText("IFC4", "#7=IFCCARTESIANPOINT((1.,2.5001));\n"));
    make("schema.ifc", fileText("IFC2X3", kPoint));
    make("ints.ifc", fileText("IFC4", "#7=IFCCARTESIANPOINT((1,2));\n"));
    make("other.ifc", fileText("IFC\\X\\34", "#007=IfcCartesianPoint((1,+25.E-1));\n"));
    struct Case {
        const char* arguments;
        int status;
        const char* out;
    };
    const char* const kReal =
        "Double is different\nList item 1 is different\nList item 0 is different\n"
        "Data list is different\nData item #7 is different\n";
    const char* const kSchema =
        "String value is different\nList item 0 is different\nList item 0 is different\n"
        "FILE_SCHEMA is different\nHEADER is different\n";
    const Case kCases[] = {
        {"a.ifc a.ifc", 0, ""},
        {"a.ifc near.ifc", 1, kReal},
        {"--tolerance 0.001 a.ifc near.ifc", 0, ""},
        {"a.ifc --tolerance 1e-5 near.ifc", 1, kReal},
        {"a.ifc other.ifc", 0, ""},  // other spellings of the same
        {"a.ifc schema.ifc", 1, kSchema},
        {"a.ifc schema.ifc --ignore-header", 0, ""},
        {"a.ifc a.ifc --plain --tolerance 1e-9", 0, ""},
        {"ints.ifc ints.ifc --plain", 0, ""},
        // No two reals differ by less than nothing.
        {"a.ifc a.ifc --plain", 1,
         "Double is different\nList item 0 is different\nList item 0 is different\n"
         "Data list is different\nData item #7 is different\n"},
        {"a.ifc --tolerance 1e-5 near.ifc --plain", 1, kReal},
        {"a.ifc schema.ifc --tolerance 1 --plain", 1, kSchema},
    };
    for (const Case& test : kCases) {
        const Outcome outcome = run(std::string("compare ") + test.arguments);
        EXPECT_EQ(outcome.status, test.status) << test.arguments;
        EXPECT_EQ(outcome.out, test.out) << test.arguments;
        EXPECT_EQ(outcome.err, "") << test.arguments;
    }
}

TEST_F(ToolTest, CompareOfInvalidFiles) {
    make("a.ifc", kGood);
    make("twice.ifc", fileText("IFC4", kPoint + kPoint));
    make("cut.ifc", kGood.substr(0, kGood.size() - kEnd.size()));
    fs::create_directory(folder_ / "folder");
    const std::pair<const char*, const char*> kCases[] = {
        {"missing.ifc", "No such file or directory"},
        {"folder", "is a directory"},
        {"twice.ifc", "is not a valid STEP physical file"},
        {"cut.ifc", "is not a valid STEP physical file"},
    };
    for (const auto& [file, cause] : kCases) {
        for (const std::string& files :
             {std::string("a.ifc ") + file, std::string(file) + " a.ifc"}) {
            const Outcome outcome = run("compare " + files);
            EXPECT_EQ(outcome.status, 2) << files;
            EXPECT_EQ(outcome.err, std::string("ovik: ") + file + ": " + cause + "\n") << files;
        }
    }
    EXPECT_EQ(run("compare a.ifc twice.ifc --log log.txt").status, 2);
    EXPECT_EQ(text("log.txt"), "Duplicate data with id #7\n");

    // Both have their say, the first one first.
    make("again.ifc", fileText("IFC4", "#8=IFCPOINT();\n#8=IFCPOINT();\n"));
    const Outcome both = run("compare twice.ifc again.ifc --log log.txt");
    EXPECT_EQ(both.status, 2);
    EXPECT_EQ(both.err,
              "ovik: twice.ifc: is not a valid STEP physical file\n"
              "ovik: again.ifc: is not a valid STEP physical file\n");
    EXPECT_EQ(text("log.txt"), "Duplicate data with id #7\nDuplicate data with id #8\n");
}

TEST_F(ToolTest, Info) {
    make("a.ifc", kGood);
    const Outcome outcome = run("info a.ifc");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "Schema                IFC4\n"
              "Description           A \u00e4\n"
              "Implementation level  2;1\n"
              "Name                  n.ifc\n"
              "Time stamp            2020-01-31T12:00:00\n"
              "Author                Ann\n"
              "Organization          Org\n"
              "Preprocessor version  pre\n"
              "Originating system    sys\n"
              "Authorization         auth\n"
              "File schema           IFC4\n"
              "Entities              3\n"
              "         2  IFCCARTESIANPOINT\n"
              "         1  IFCDIRECTION\n");
}

const std::string kId = "'0123456789012345678901'";
std::string assembly(int number, const std::string& name) {
    return "#" + std::to_string(number) + "=IFCELEMENTASSEMBLY(" + kId + ",$," + name +
           ",$,$,$,$,$,$,$);\n";
}
std::string aggregate(int number, int whole, const std::string& parts) {
    return "#" + std::to_string(number) + "=IFCRELAGGREGATES(" + kId + ",$,$,$,#" +
           std::to_string(whole) + ",(" + parts + "));\n";
}

TEST_F(ToolTest, Tree) {
    make("a.ifc", fileText("IFC4", "#1=IFCPROJECT(" + kId + ",$,'P <1> & \"2\"',$,$,$,$,$,$);\n" +
                                       // Control characters: nothing that a terminal acts on.
                                       assembly(2, "'A\\X\\9B\\X\\0Ax'") + assembly(3, "$") +
                                       assembly(4, "'\\S\\d'") + assembly(5, "'B'") +
                                       aggregate(11, 1, "#2,#3") + aggregate(12, 2, "#3,#4") +
                                       aggregate(13, 4, "#2") + aggregate(14, 5, "#5")));
    const std::string kLeftOut =
        "ovik: a.ifc: 1 relation(s) left out: the relating object is missing or in a cycle that "
        "no root leads to\n";
    const Outcome outcome = run("tree a.ifc");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, kLeftOut);
    EXPECT_EQ(outcome.out,
              "IFCPROJECT \"P <1> & \"2\"\" #1\n"
              "├─ IFCELEMENTASSEMBLY \"A  x\" #2\n"
              "│  ├─ IFCELEMENTASSEMBLY #3\n"
              "│  └─ IFCELEMENTASSEMBLY \"ä\" #4\n"
              "│     └─ IFCELEMENTASSEMBLY \"A  x\" #2 (cycle, cut here)\n"
              "└─ IFCELEMENTASSEMBLY #3 (shown above)\n");

    const Outcome page = run("tree --html a.html a.ifc");
    EXPECT_EQ(page.status, 0);
    EXPECT_EQ(page.err, kLeftOut);
    EXPECT_EQ(page.out, "a.html: a tree of 4 objects written\n");
    const std::string html = text("a.html");
    for (const char* piece :
         {"<title>a.ifc</title>", "P &lt;1&gt; &amp; &quot;2&quot; ", "1 relation(s) left out",
          "<tr><td>3<td>IFCELEMENTASSEMBLY\n<tr><td>1<td>IFCPROJECT\n",
          "<a href=\"#n2\"><em>cycle, cut here</em></a>",
          "<a href=\"#n3\"><em>shown above</em></a>"})
        EXPECT_NE(html.find(piece), std::string::npos) << piece;
    EXPECT_EQ(count(html, "<details"), 3u);  // of project, #2 and #4
    EXPECT_EQ(count(html, "</ul></details>"), 3u);
    EXPECT_EQ(count(html, "<li"), 6u);
    for (const char* outside : {"http", "src=", "@import", "url("})
        EXPECT_EQ(count(html, outside), 0u) << outside;

    EXPECT_EQ(run("tree a.ifc --html nowhere/a.html").status, 2);
    EXPECT_EQ(run("tree a.ifc --html a.ifc").status, 2);
    EXPECT_EQ(run("info a.ifc").status, 0);
    make("none.ifc", kGood);
    const Outcome none = run("tree none.ifc");
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.err, "ovik: none.ifc: no object is part of another\n");
}

// A file decides how deep a tree is: its size must not grow with the square of that.
TEST_F(ToolTest, DeepTree) {
    constexpr int kDepth = 100'000;
    std::string records = assembly(1, "$");
    for (int i = 1; i < kDepth; ++i) {
        records +=
            assembly(2 * i + 1, "$") + aggregate(2 * i, 2 * i - 1, "#" + std::to_string(2 * i + 1));
    }
    make("deep.ifc", fileText("IFC4", records));
    const Outcome outcome = run("tree deep.ifc");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(count(outcome.out, "\n"), static_cast<std::size_t>(kDepth));
    EXPECT_TRUE(outcome.out.ends_with("└─ [level 99999] IFCELEMENTASSEMBLY #199999\n"));
    EXPECT_LT(outcome.out.size(), 300u * kDepth);
    EXPECT_EQ(run("tree deep.ifc --html deep.html").status, 0);
    const std::string html = text("deep.html");
    EXPECT_EQ(count(html, "<li"), static_cast<std::size_t>(kDepth));
    EXPECT_LT(count(html, "<details"), 100u);  // more than some hundreds no browser nests
    EXPECT_EQ(count(html, "<details"), count(html, "</details>"));
}

TEST_F(ToolTest, ShowsAttributesByName) {
    make("a.ifc",
         fileText("IFC4",
                  "#1=IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.);\n"
                  "#2=IFCPROPERTYSINGLEVALUE('A''\\X\\0A\\X\\9B\\X2\\202E\\X0\\\\S\\d',$,"
                  "IFCBOOLEAN(.T.),#1);\n"
                  "#3=IFCCARTESIANPOINTLIST3D(((1.,2.5,-3.),(0.1,0.,1.E30)));\n"
                  "#5=IFCPROPERTYSET('2O2Fr$t4X7Zf8NOew3FLOH',$,$,$,(#2));\n"
                  "#6=IFCBSPLINECURVEWITHKNOTS(1,(#7,#7),.UNSPECIFIED.,.F.,.U.,(1,1),(0.,1.),"
                  ".UNSPECIFIED.);\n" +
                      kPoint + "#8=IFCTABLEROW((IFCLABEL('x'),IFCREAL(2.)),.T.);\n"));
    const Outcome outcome = run("show a.ifc 1 '#2' 3 5 6 8");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "#1 IFCSIUNIT\n"
              "  Dimensions  none\n"
              "  UnitType    .LENGTHUNIT.\n"
              "  Prefix      .MILLI.\n"
              "  Name        .METRE.\n"
              "#2 IFCPROPERTYSINGLEVALUE\n"
              "  Name          'A'   \u00e4'\n"
              "  Description   unset\n"
              "  NominalValue  IfcBoolean(true)\n"
              "  Unit          #1\n"
              "#3 IFCCARTESIANPOINTLIST3D\n"
              "  CoordList  ((1, 2.5, -3), (0.1, 0, 1e+30))\n"
              "#5 IFCPROPERTYSET\n"
              "  GlobalId       '2O2Fr$t4X7Zf8NOew3FLOH'\n"
              "  OwnerHistory   unset\n"
              "  Name           unset\n"
              "  Description    unset\n"
              "  HasProperties  (#2)\n"
              "#6 IFCBSPLINECURVEWITHKNOTS\n"
              "  Degree              1\n"
              "  ControlPointsList   (#7, #7)\n"
              "  CurveForm           .UNSPECIFIED.\n"
              "  ClosedCurve         false\n"
              "  SelfIntersect       unknown\n"
              "  KnotMultiplicities  (1, 1)\n"
              "  Knots               (0, 1)\n"
              "  KnotSpec            .UNSPECIFIED.\n"
              "#8 IFCTABLEROW\n"
              "  RowCells   (IfcLabel('x'), IfcReal(2))\n"
              "  IsHeading  true\n");

    EXPECT_EQ(run("show a.ifc 4294967303").err, "ovik: a.ifc: has no instance #4294967303\n");

    // What is not there is told, and the rest is shown.
    const Outcome partly = run("show a.ifc 4 7");
    EXPECT_EQ(partly.status, 1);
    EXPECT_EQ(partly.err, "ovik: a.ifc: has no instance #4\n");
    EXPECT_EQ(partly.out, "#7 IFCCARTESIANPOINT\n  Coordinates  (1, 2.5)\n");
    make("other.ifc", fileText("IFC4X3", kPoint));
    for (const char* file : {"missing.ifc", "other.ifc"}) {
        const Outcome none = run(std::string("show ") + file + " 7");
        EXPECT_EQ(none.status, 1) << file;
        EXPECT_EQ(none.out, "") << file;
        EXPECT_EQ(none.err.find(std::string("ovik: ") + file + ": "), 0u) << file;
    }
}

TEST_F(ToolTest, Demo) {
    make("a.ifc", kGood);
    const Outcome own = run("files", OVIK_DEMO);
    EXPECT_EQ(own.status, 0) << own.out << own.err;
    EXPECT_NE(own.out.find("Garden wall, 2\u00bd m"), std::string::npos);
    for (const char* schema : {"IFC2X3", "IFC4"}) {
        const std::string changed = text("files/" + std::string(schema) + "-changed.ifc");
        EXPECT_NE(changed.find("'Garden wall, 2\\S\\= m','Set by name'"), std::string::npos);
        EXPECT_NE(changed.find("IFCPOSITIVELENGTHMEASURE(0.24)"), std::string::npos);
    }
    const Outcome given = run("files a.ifc", OVIK_DEMO);
    EXPECT_EQ(given.status, 0) << given.out << given.err;
    EXPECT_NE(given.out.find("2  IFCCARTESIANPOINT\n"), std::string::npos);
    EXPECT_EQ(run("files missing.ifc", OVIK_DEMO).status, 1);

    // The input stays as it is, wherever it stands and whatever name it goes by.
    EXPECT_EQ(run(". a.ifc", OVIK_DEMO).status, 0);
    EXPECT_EQ(text("a.ifc"), kGood);
    fs::remove(folder_ / "a-copy.ifc");
    fs::create_hard_link(folder_ / "a.ifc", folder_ / "a-copy.ifc");
    const Outcome same = run(". a.ifc", OVIK_DEMO);
    EXPECT_EQ(same.status, 1);
    EXPECT_EQ(same.err, "ovik: ./a-copy.ifc: is the input itself\n");
    EXPECT_EQ(text("a.ifc"), kGood);
}

}  // namespace
