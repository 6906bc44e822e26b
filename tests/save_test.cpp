// Saving: numbers, what is missing, the header, and all or nothing on the disk.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <limits>
#include <random>
#include <regex>

#include "loadtext.h"
#include "ovik/ifc4.h"

namespace Ovik {
namespace {

using namespace Test;
namespace fs = std::filesystem;

class Save : public ModelTest {
 protected:
    void SetUp() override {
        ModelTest::SetUp();
        fs::create_directories(folder_.path);
    }
    void TearDown() override { fs::remove_all(folder_.path); }

    Probe* makeProbe(int number, std::function<void(IfcOutFiler&)> fields) {
        Probe* const probe = make<Probe>();
        return writing(probe, number, std::move(fields));
    }
    static Probe* writing(Probe* probe, int number, std::function<void(IfcOutFiler&)> fields) {
        probe->setIfcId(number);
        probe->ownWrite = [=](IfcOutFiler& out) { out.writeRecord(*probe, [&] { fields(out); }); };
        return probe;
    }
    /// Saves to `target_`; the error's number.
    int save(const fs::path& path, IfcSaveReport* report = nullptr) const {
        return model_->save(path, header_, nullptr, nullptr, report).value();
    }
    int save() const { return save(target_); }
    static std::string read(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }
    /// The names in the folder.
    std::string names() const {
        std::set<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.path))
            names.insert(entry.path().filename().string());
        std::string text;
        for (const std::string& name : names) text += name + " ";
        return text;
    }

    const TempFile folder_;
    const fs::path target_ = folder_.path / "a.ifc";
    IfcHeader header_;
};

TEST_F(Save, KeepsNumbersAndGivesTheNextAboveTheHighest) {
    constexpr int kLast = std::numeric_limits<int>::max();
    const struct {
        std::vector<int> numbers;  // of the entities, in the order of the model
        const char* records;       // number and index of each
        unsigned renumbered;
    } cases[] = {
        {{}, "", 0},
        {{0, 0}, "1:0 2:1 ", 0},
        {{10, 20, 30}, "10:0 20:1 30:2 ", 0},
        {{10, 20, 0, 0}, "10:0 20:1 21:2 22:3 ", 0},
        {{0, 10}, "10:1 11:0 ", 0},
        {{20, 10, 30, 15}, "10:1 15:3 20:0 30:2 ", 0},
        {{5, 5, -3, 0, 7, 5, 7}, "5:0 7:4 8:1 9:2 10:3 11:5 12:6 ", 4},
        {{kLast - 1, 0, 3}, "3:2 2147483646:0 2147483647:1 ", 0},
        {{kLast, 1}, "1:1 2147483647:0 ", 0},
    };
    const std::regex record("#(\\d+)= IFCTESTPROBE\\((\\d+)\\);\n");
    for (const auto& c : cases) {
        model_ = newModel();
        for (int i = 0; i < static_cast<int>(c.numbers.size()); ++i)
            makeProbe(c.numbers[static_cast<std::size_t>(i)], [i](auto& out) { out.writeInt(i); });
        IfcSaveReport report;
        EXPECT_EQ(save(target_, &report), 0);
        EXPECT_EQ(std::regex_replace(savedRecordsOf(*model_), record, "$1:$2 "), c.records);
        EXPECT_EQ(report.records, c.numbers.size());
        EXPECT_EQ(report.renumbered, c.renumbered) << c.records;
        EXPECT_EQ(report.bytes, fs::file_size(target_));
        EXPECT_EQ(savedRecordsOf(*model_, false), c.numbers.empty() ? "" : recordsOf(*model_));
    }
    make<Probe>();
    IfcSaveReport report;
    EXPECT_EQ(save(target_, &report), EOVERFLOW);
    EXPECT_EQ(report.failure, IfcSaveReport::Failure::Numbers);
}

TEST_F(Save, FindsTheNumberOfEachReference) {
    // Numbers without gaps, with some, with many, and far apart; a few new entities behind.
    std::mt19937 random(1);
    for (const unsigned gap : {1u, 2u, 30u, 3'000'000u}) {
        model_ = newModel();
        std::vector<Probe*> probes;
        std::vector<int> numbers;
        int last = 0;
        for (std::size_t i = 0; i < 700; ++i) {
            last += 1 + static_cast<int>(i < 650 ? random() % gap : i == 650 ? 900 : 0);
            numbers.push_back(last);
            const std::size_t target = random() % 700;
            probes.push_back(makeProbe(i < 690 ? last : 0, [&probes, target](auto& out) {
                out.writeEntity(probes[target]);
            }));
            probes.back()->setUserData(static_cast<int>(target));
        }
        std::string expected;
        for (std::size_t i = 0; i < 700; ++i) {
            const int target = numbers[static_cast<std::size_t>(probes[i]->userData())];
            expected += "#" + std::to_string(numbers[i]) + "= IFCTESTPROBE(#" +
                        std::to_string(target) + ");\n";
        }
        EXPECT_EQ(savedRecordsOf(*model_), expected);
    }
}

TEST_F(Save, WritesWhatClassesFromOutsideWriteInAnyWay) {
    Probe outside, helper, inner;
    writing(&outside, 5, [](auto& out) { out.writeInt(5); });
    writing(&inner, 0, [&](auto& out) { out.writeEntity(&outside); });
    Probe* const first = make<Probe>();
    Probe* const second = makeProbe(20, [&](auto& out) {
        inner.write(out);
        out.writeEntity(&inner);
    });
    Probe* const silent = make<Probe>();
    silent->setIfcId(30);
    silent->ownWrite = [](IfcOutFiler& out) { out.writeString(XString(u"nowhere")); };
    Probe* const several = make<Probe>();
    writing(first, 10, [&](auto& out) {
        for (const Probe* target : {silent, &outside, second, several, &outside})
            out.writeEntity(target);
        first->write(out);
    });
    several->ownWrite = [&](IfcOutFiler& out) {
        out.writeInt(1);
        out.writeRecord(*several, [] {});
        out.writeRecord(helper, [&] { out.writeEntity(several); });
    };
    EXPECT_EQ(savedRecordsOf(*model_),
              "#10= IFCTESTPROBE($,#23,#20,#21,#23);\n#20= IFCTESTPROBE(#24);\n"
              "#21= IFCTESTPROBE();\n#22= IFCTESTPROBE(#21);\n#23= IFCTESTPROBE(5);\n"
              "#24= IFCTESTPROBE(#23);\n");
    EXPECT_EQ(savedRecordsOf(*model_, false),
              "#1= IFCTESTPROBE($,#2,#3,#5,#2);\n#2= IFCTESTPROBE(5);\n"
              "#3= IFCTESTPROBE(#4);\n#4= IFCTESTPROBE(#2);\n#5= IFCTESTPROBE();\n"
              "#6= IFCTESTPROBE(#5);\n");
}

TEST_F(Save, WritesWhatIsMissingAsDollarAndEndsNoStringBeforeItsTime) {
    auto* const measure = make<IFC4::IfcMeasureWithUnit>();
    measure->setValueComponent(static_cast<IFC4::IfcValue::CTag>(-1));
    auto* const person = make<IFC4::IfcPerson>();
    person->setFamilyName(XString::decode("it's\\S\\"));
    auto names = person->getMiddleNames();
    for (const char* text : {"it''s", "a\\S\\'b", "\\\\", "\\X\\27", "a\\"})
        names.add(XString::decode(text));
    names.add(XString());
    person->setMiddleNames(names);
    person->setIdentification(XString(u""));
    make<IFC4::IfcProject>();
    EXPECT_EQ(savedRecordsOf(*model_),
              "#1= IFCMEASUREWITHUNIT($,$);\n"
              R"(#2= IFCPERSON('','it''',$,('it''s','a\S\'b','\\','\X\27','a\',$),$,$,$,$);)"
              "\n"
              "#3= IFCPROJECT($,$,$,$,$,$,$,$,$);\n");
}

TEST_F(Save, RefusesInfinitiesAndWhatIsNoNumber) {
    ASSERT_EQ(save(), 0);
    const std::string before = read(target_);
    auto* const point = make<IFC4::IfcCartesianPoint>();
    make<IFC4::IfcDirection>()->getDirectionRatios().add(std::numeric_limits<double>::infinity());
    point->getCoordinates().add(std::numeric_limits<double>::quiet_NaN());
    IfcSaveReport report;
    // What has been written to a device can't be taken back, so it is not even tried.
    for (const fs::path& path : {target_, fs::path("/dev/full")}) {
        EXPECT_EQ(save(path, &report), EDOM);
        EXPECT_EQ(report.failure, IfcSaveReport::Failure::NoNumber);
        EXPECT_EQ(report.number, 1u);
        EXPECT_EQ(report.className, "IFCCARTESIANPOINT");
        EXPECT_EQ(report.attribute, "Coordinates");
        EXPECT_EQ(report.bytes, 0u);
    }
    EXPECT_EQ(read(target_), before);
}

TEST_F(Save, GivesBackTheHeaderOfTheFileButForFieldsSetSince) {
    const auto header = [this] {
        EXPECT_EQ(save(), 0);
        const std::string text = read(target_), begin = "HEADER;\n",
                          end = "FILE_SCHEMA(('IFC4'));\n";
        const std::size_t from = text.find(begin) + begin.size();
        return text.substr(from, text.find(end) - from);
    };
    header_.setTimeStamp(XString(u"t"));
    header_.setFileName(XString::decode("C:\\S\\"));
    header_.setAuthor(XString(u"it's \\"));
    EXPECT_EQ(header(),
              "FILE_DESCRIPTION((''),'2;1');\n"
              "FILE_NAME('C:','t',('it''s \\\\'),(''),'','','');\n");
    const std::string description = "FILE_DESCRIPTION(('a''\\','b'),'3;1');\n",
                      name = "FILE_NAME($,'u',('a','\\X\\41'));\n";
    const std::string text = "ISO-10303-21;HEADER;" + description + name +
                             "FILE_SCHEMA(('ifc4'));ENDSEC;DATA;ENDSEC;END-ISO-10303-21;";
    EXPECT_EQ(load(text, {.exact = true}, &header_).log, "");
    const IfcHeader loaded = header_;
    EXPECT_EQ(header(), description + name);
    header_.setOriginatingSystem(XString(u"o"));
    header_.setTimeStamp(XString(u"v"));
    EXPECT_EQ(header(), description + "FILE_NAME($,'v',('a','\\X\\41'),(''),'','o');\n");
    header_ = loaded;
    EXPECT_EQ(header(), description + name);
    std::string plain = text;  // where a backslash before an apostrophe is something else
    plain.erase(plain.find("''\\"), 3);
    load(plain, {}, &header_);
    EXPECT_EQ(header(),
              "FILE_DESCRIPTION(('ab'),'2;1');\nFILE_NAME('','u',('aA'),(''),'','','');\n");
}

TEST_F(Save, LeavesTheOldFileWhenTheDiskIsFullAtAnyByte) {
    std::ofstream(target_) << "old";
    struct rlimit all {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &all), 0);
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    const auto saveWithin = [&](std::uint64_t size) {
        const struct rlimit limit = {size, all.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const int error = save();
        ::setrlimit(RLIMIT_FSIZE, &all);
        return error;
    };
    header_.setTimeStamp(XString(u"t"));
    make<IFC4::IfcProject>();
    std::uint64_t size = 0;
    for (; saveWithin(size) != 0; ++size) {
        ASSERT_EQ(saveWithin(size), EFBIG);
        ASSERT_EQ(read(target_), "old");
        ASSERT_EQ(names(), "a.ifc ");
    }
    EXPECT_EQ(size, fs::file_size(target_));
    const std::string small = read(target_);
    // Text is handed on in pieces: the disk is full in the first, the second, or the last.
    for (int i = 0; i < 5000; ++i) make<IFC4::IfcProject>();
    for (const std::uint64_t full :
         {small.size(), std::size_t{1} << 16, (std::size_t{1} << 16) + 1, std::size_t{1} << 17}) {
        EXPECT_EQ(saveWithin(full), EFBIG);
        EXPECT_EQ(read(target_), small);
        EXPECT_EQ(names(), "a.ifc ");
    }
    EXPECT_EQ(save(), 0);
    EXPECT_GT(fs::file_size(target_), std::size_t{1} << 17);
    EXPECT_EQ(save("/dev/full"), ENOSPC);
    std::signal(SIGXFSZ, before);
}

TEST_F(Save, IsWholeWhenTheProcessIsKilled) {
    for (int i = 0; i < 3000; ++i) make<IFC4::IfcProject>();
    const IfcModelPtr other = newModel();
    header_.setTimeStamp(XString(u"t"));
    ASSERT_EQ(save(), 0);
    const std::string one = read(target_);
    ASSERT_EQ(other->save(target_, header_), std::error_code());
    const std::string two = read(target_);
    std::mt19937 random(7);
    for (int round = 0; round < 20; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                save();
                other->save(target_, header_).clear();
            }
        }
        ::usleep(static_cast<useconds_t>(random() % 20000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const std::string left = read(target_);
        EXPECT_TRUE(left == one || left == two) << left.size();
    }
}

TEST_F(Save, FollowsLinksAndKeepsPermissions) {
    const fs::path real = folder_.path / "real", link = folder_.path / "link";
    fs::create_symlink("real", link);
    fs::create_symlink("link", target_);
    EXPECT_EQ(save(), 0);  // the end of the links is made
    EXPECT_TRUE(fs::is_symlink(target_) && fs::is_symlink(link) && !fs::is_symlink(real));
    const mode_t mask = ::umask(022);
    EXPECT_EQ(fs::status(real).permissions(), fs::perms(0666 & ~mask));
    for (const unsigned mode : {0600u, 0666u, 02640u}) {
        fs::permissions(real, fs::perms(mode));
        EXPECT_EQ(save(), 0);
        EXPECT_EQ(fs::status(real).permissions(), fs::perms(mode));
    }
    ::umask(mask);
    EXPECT_EQ(names(), "a.ifc link real ");

    fs::create_symlink("round", folder_.path / "round");
    EXPECT_EQ(save(folder_.path / "round"), ELOOP);
    EXPECT_EQ(save(folder_.path), EISDIR);
    EXPECT_EQ(save(folder_.path / ""), EISDIR);
    EXPECT_EQ(save(real / "a.ifc"), ENOTDIR);
    EXPECT_EQ(save(folder_.path / "none" / "a.ifc"), ENOENT);
    EXPECT_EQ(save(fs::path()), ENOENT);

    // A file, then a folder, that may not be written to; who may do everything steps down for it.
    const uid_t user = ::geteuid();
    fs::permissions(folder_.path, fs::perms(0777));
    fs::permissions(real, fs::perms(0444));
    ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);
    const int readOnlyFile = save();
    ASSERT_EQ(::seteuid(user), 0);
    fs::permissions(real, fs::perms(0666));
    fs::permissions(folder_.path, fs::perms(0555));
    ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);
    const int readOnlyFolder = save();
    ASSERT_EQ(::seteuid(user), 0);
    fs::permissions(folder_.path, fs::perms(0777));
    EXPECT_EQ(readOnlyFile, EACCES);
    EXPECT_EQ(readOnlyFolder, EACCES);
    EXPECT_EQ(names(), "a.ifc link real round ");
}

TEST_F(Save, WritesStraightToPipesAndOpenFiles) {
    header_.setTimeStamp(XString(u"t"));
    ASSERT_EQ(save(), 0);
    const std::string expected = read(target_);
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const fs::path in = "/dev/fd/" + std::to_string(ends[1]);
    EXPECT_EQ(save(in), 0);
    std::string text(expected.size() + 1, '\0');
    EXPECT_EQ(::read(ends[0], text.data(), text.size()), static_cast<ssize_t>(expected.size()));
    EXPECT_TRUE(text.starts_with(expected));
    // An open file is written, and not replaced, though it has a name.
    const int file = ::open(target_.c_str(), O_RDWR);
    struct stat before {
    }, after{};
    ::fstat(file, &before);
    EXPECT_EQ(save("/proc/self/fd/" + std::to_string(file)), 0);
    ::stat(target_.c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(read(target_), expected);
    // Nobody reads any more: an error, and no signal.
    const fs::path fifo = folder_.path / "fifo";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const pid_t reader = ::fork();
    if (reader == 0) ::_exit(::open(fifo.c_str(), O_RDONLY) < 0);
    for (int i = 0; i < 50000; ++i) make<IFC4::IfcProject>();
    EXPECT_EQ(save(fifo), EPIPE);
    ::waitpid(reader, nullptr, 0);
    for (const int end : {ends[0], ends[1], file}) ::close(end);
}

TEST_F(Save, TellsAMeterWhichMayEndIt) {
    struct Meter final : ProgressMeter {
        void start(std::uint64_t total) override { calls += "start " + std::to_string(total); }
        void progress(std::uint64_t position) override {
            calls += " " + std::to_string(position);
            if (position == last) throw position;
        }
        void finish() override { calls += " finish"; }
        std::string calls;
        std::uint64_t last = 0;
    } meter, ending;
    for (int i = 0; i < 3; ++i) make<Probe>();
    model_->get(1)->setUserData(1);
    ending.last = 2;
    for (const bool keepNumbers : {true, false}) {
        const IfcSaveOptions options{keepNumbers};
        meter.calls.clear();
        ending.calls.clear();
        EXPECT_FALSE(model_->save(target_, header_, &options, &meter));
        EXPECT_EQ(meter.calls, "start 3 1 2 3 finish");
        const std::string before = read(target_);
        EXPECT_THROW((void)model_->save(target_, header_, &options, &ending), std::uint64_t);
        EXPECT_EQ(ending.calls, "start 3 1 2 finish");
        EXPECT_EQ(read(target_), before);
        EXPECT_EQ(names(), "a.ifc ");
    }
}

}  // namespace
}  // namespace Ovik
