#include "object/eatable.h"
#include "support/Testing.h"

TEST(Eatable, TakesItsLiteralWithTheWhiteSpaceRoundIt)
{
    std::istringstream stream("  (  7 ; 8)");
    int first = 0;
    int second = 0;
    stream >> eatable("(") >> first >> eatable(";") >> second >> eatable(")");
    EXPECT_TRUE(!stream.fail() && stream.eof());
    EXPECT_TRUE(first == 7 && second == 8);
    std::istringstream text("  x");
    text >> eatable("");
    EXPECT_EQ(text.peek(), ' ') << "an empty literal reads nothing";
}

TEST(Eatable, FailsOnAMismatchAndKeepsTheFormatFlags)
{
    for (char const * text : {"(7)", "", "  ", "b", "a b"}) {
        std::istringstream stream(text);
        std::ios_base::fmtflags const flags = stream.flags();
        stream >> eatable("ab");
        EXPECT_TRUE(stream.fail()) << text;
        EXPECT_EQ(stream.flags(), flags) << text;
    }
}

TEST(ExceptionMessage, IsFormattedAndSurvivesPercentSignsInItsArguments)
{
    EXPECT_EQ(Exception("Error loading from '%s' (line %d)!", "100%s", 3).GetMessage(),
              "Error loading from '100%s' (line 3)!");
    EXPECT_EQ(Exception(static_cast<char const *>(nullptr)).GetMessage(), "");
    std::string const longText(100000, 'x');
    EXPECT_EQ(Exception("%s", longText.c_str()).GetMessage(), longText.substr(0, 65535));
    EXPECT_EQ(Exception(longText).GetMessage(), longText);
}
