#include "object/Version.h"
#include "support/Testing.h"

#include <locale>

TEST(VersionText, PrintsAndParsesBackWithEveryCombinationOfFlags)
{
    std::pair<Version, char const *> const cases[] = {
        {Version(0, 8, 0, 3801, 20121004, false, false), "0.8.0-3801 (20121004)"},
        {Version(1, 2, 3, 4, 5, true, false), "1.2.3-4 (5) experimental"},
        {Version(1, 2, 3, 4, 5, false, true), "1.2.3-4 (5) debug"},
        {Version(4294967295u, 0, 0, 0, 0, true, true), "4294967295.0.0-0 (0) experimental debug"},
    };
    for (auto const & [version, text] : cases) {
        EXPECT_EQ(version.GetString(), text);
        EXPECT_EQ(Version(text), version) << text;
    }
}

TEST(VersionText, IsZeroWhereItCannotBeRead)
{
    for (char const * text : {"", "1.2", "1.2.3-x", "1.2.3-4 20121004)", "1.2.3-4 (20121004", "1.2.3--4 (5)",
                              "+1.2.3-4 (5)", "4294967296.2.3-4 (5)", static_cast<char const *>(nullptr)}) {
        EXPECT_EQ(Version(text), Version());
    }
}

TEST(VersionStream, LeavesWhatBelongsToTheNextReader)
{
    std::tuple<char const *, Version, char const *> const cases[] = {
        {" 1 . 2 .3 - 4(5 )experimental  debug end", Version(1, 2, 3, 4, 5, true, true), "end"},
        {"1.2.3-4 (5) expert", Version(1, 2, 3, 4, 5, false, false), "expert"},
        {"1.2.3-4 (5) debug experimental", Version(1, 2, 3, 4, 5, false, true), "experimental"},
        {"1.2.3-4 (5)", Version(1, 2, 3, 4, 5, false, false), ""},
        {"1.2.3-4 [5]", Version(), ""},
    };
    for (auto const & [text, expected, expectedRest] : cases) {
        std::istringstream stream(text);
        Version version;
        EXPECT_EQ(!(stream >> version), expected == Version()) << text;
        EXPECT_EQ(version, expected) << text;
        std::string rest;
        stream >> rest;
        EXPECT_EQ(rest, expectedRest) << text;
    }
}

TEST(VersionStream, DoesNotHeedTheLocaleOrTheBase)
{
    struct Grouping : std::numpunct<char>
    {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::stringstream stream;
    stream.imbue(std::locale(std::locale::classic(), new Grouping));
    Version const expected(0, 8, 100, 3801, 20121004, false, false);
    Version version;
    stream << std::hex << expected;
    stream >> version;
    EXPECT_EQ(version, expected);
}

TEST(VersionOrder, LooksAtTheFirstNumberThatDiffersAndNeverAtTheFlags)
{
    Version const ordered[] = {Version(0, 0, 0, 0, 1, true, true), Version(0, 0, 0, 1, 0, false, true),
                               Version(0, 0, 1, 0, 0, true, false), Version(0, 1, 0, 0, 0, false, false),
                               Version(1, 0, 0, 0, 0, true, true)};
    for (Version const & a : ordered) {
        for (Version const & b : ordered) {
            EXPECT_TRUE((a < b) == (&a < &b) && (a > b) == (&a > &b) && (a <= b) == (&a <= &b) &&
                        (a >= b) == (&a >= &b));
        }
    }
    Version const plain(1, 2, 3, 4, 5, false, false);
    Version const debug(1, 2, 3, 4, 5, false, true);
    EXPECT_FALSE(plain == debug || plain <= debug || plain >= debug || plain < debug || plain > debug);
}
