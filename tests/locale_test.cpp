// All tests run in a locale that groups digits and writes a comma for the point: nothing that the
// library reads or writes may show it.
#include <gtest/gtest.h>

#include <locale>
#include <sstream>

namespace {

template <class Char>
class Numbers : public std::numpunct<Char> {
    Char do_decimal_point() const override { return ','; }
    Char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class HostileLocale : public testing::Environment {
    void SetUp() override {
        const std::locale narrow(std::locale::classic(), new Numbers<char>);
        std::locale::global(std::locale(narrow, new Numbers<wchar_t>));
    }
};

const testing::Environment* const kHostileLocale =
    testing::AddGlobalTestEnvironment(new HostileLocale);

TEST(Locale, IsHostileInAllTests) {
    std::wostringstream text;
    text << 1234.5;
    EXPECT_EQ(text.str(), L"1.234,5");
}

}  // namespace
