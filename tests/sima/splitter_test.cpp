// Lines into fields.
#include "sima/text/splitter.h"

#include "sima/plain_splitter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace fenmark::sima {

namespace {

using Texts = std::vector<std::string>;
using sima_test::splitPlainly;

Texts split(std::string_view line) {
    Fields fields;
    const std::int32_t count = splitLine(line, ",", fields);
    EXPECT_EQ(static_cast<std::size_t>(count), fields.size());
    Texts result;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        result.emplace_back(fields[i]);
    }
    return result;
}

} // namespace

TEST(SplitLine, GivesOneEmptyFieldForAnEmptyLine) {
    EXPECT_EQ(split(""), Texts{""});
}

TEST(SplitLine, GivesAnEmptyLastFieldBehindATrailingComma) {
    EXPECT_EQ(split("A99,"), (Texts{"A99", ""}));
    EXPECT_EQ(split("A01,1,P1,100.5,200.5,,"), (Texts{"A01", "1", "P1", "100.5", "200.5", "", ""}));
}

TEST(SplitLine, EmptiesFieldsOfBlanksAndKeepsTheBlanksOfOthers) {
    EXPECT_EQ(split("A01, , P 1 ,\t,"), (Texts{"A01", "", " P 1 ", "", ""}));
    EXPECT_EQ(split("A01,　,"), (Texts{"A01", "　", ""}));
}

TEST(SplitLine, KeepsQuotedBlanks) {
    EXPECT_EQ(split("A01,\"  \",P"), (Texts{"A01", "  ", "P"}));
}

TEST(SplitLine, TakesSeparatorsInsideQuotes) {
    EXPECT_EQ(split("\"X,Y\",2,"), (Texts{"X,Y", "2", ""}));
    EXPECT_EQ(split("A01,\"X,Y\",2,"), (Texts{"A01", "X,Y", "2", ""}));
}

TEST(SplitLine, TakesADoubledQuoteForOne) {
    EXPECT_EQ(split("\"a\"\"b\","), (Texts{"a\"b", ""}));
    EXPECT_EQ(split("\"\"\"\"\"\",x"), (Texts{"\"\"", "x"}));
}

TEST(SplitLine, GivesTheFieldsOfItsLineWhateverCameBefore) {
    Fields fields;
    for (std::size_t length = 1; length < 200; ++length) {
        std::string line;
        Texts expected;
        for (char c = 'a'; c <= 'h'; ++c) {
            const std::string half(length, c);
            line += '"' + half + "\"\"" + half + "\",";
            expected.push_back(half + '"' + half);
        }
        expected.emplace_back();
        splitLine(line, ",", fields);
        ASSERT_EQ(fields.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(fields[i], expected[i]) << length;
        }
    }
}

TEST(SplitLine, DropsTheFirstCharacterOfAFieldThatHoldsAQuoteWithoutBeginningWithOne) {
    EXPECT_EQ(split("ab\"cd,"), (Texts{"b", ""}));
    EXPECT_EQ(split("ab\"cd"), Texts{"b"});
    EXPECT_EQ(split("点b\"cd,"), (Texts{"b", ""})); // a character, not a byte
    EXPECT_EQ(split("あ\"x\"い,"), (Texts{"", ""}));
}

TEST(SplitLine, SplitsInsideQuotesBehindABlankAndLosesCharacters) {
    EXPECT_EQ(split("A01, \"a,b\","), (Texts{"A01", " \"a", "", ""}));
}

TEST(SplitLine, CutsOneCharacterBehindAClosingQuote) {
    EXPECT_EQ(split("\"a\"b,c,"), (Texts{"a", "", "c", ""}));
    EXPECT_EQ(split("\"a\"字b,c"), (Texts{"a", "b", "c"}));
}

TEST(SplitLine, GivesAnExtraEmptyFieldBehindQuotesWithASeparatorAtTheEnd) {
    EXPECT_EQ(split("x,\"a,b\""), (Texts{"x", "a,b", ""}));
    EXPECT_EQ(split("x,\"ab\""), (Texts{"x", "ab"}));
}

TEST(SplitLine, GivesTheWholeRestForAnUnclosedQuoteAndGoesOnFromItsThirdCharacter) {
    EXPECT_EQ(split("x,\"abc,d"), (Texts{"x", "\"abc,d", "bc", "d"}));
    EXPECT_EQ(split("\","), (Texts{"\",", ""}));
}

TEST(SplitLine, DoesWhatTheRulesSayOnAllShortLines) {
    // Every line of up to seven of these characters.
    const std::string alphabet = "\", a";
    for (std::size_t length = 0; length <= 7; ++length) {
        std::size_t lines = 1;
        for (std::size_t i = 0; i < length; ++i) {
            lines *= alphabet.size();
        }
        for (std::size_t n = 0; n < lines; ++n) {
            std::string line;
            for (std::size_t i = 0, rest = n; i < length; ++i, rest /= alphabet.size()) {
                line += alphabet[rest % alphabet.size()];
            }
            ASSERT_EQ(split(line), splitPlainly(line)) << "[" << line << "]";
        }
    }
}

TEST(SplitLine, TakesTimeInStepWithALineOfQuotes) {
    // An odd run of quotes before the only separator is looked through again for every field.
    std::string line(4'000'001, '"');
    line += ",x";
    Fields fields;
    EXPECT_EQ(splitLine(line, ",", fields), 2'000'002);
    EXPECT_EQ(fields[0].size(), line.size());
}

// Fields without doubled quotes lie in the line, the others beside it, where they must stay while more of them come.
TEST(SplitLine, KeepsManyFieldsOfDoubledQuotesLineAfterLine) {
    Fields fields;
    for (int line = 0; line < 200; ++line) {
        std::string text;
        for (int i = 0; i < 20; ++i) {
            text += "\"" + std::string(50, static_cast<char>('a' + i)) + "\"\"" + std::to_string(line) + "\",";
        }
        splitLine(text, ",", fields);
        ASSERT_EQ(fields.size(), 21U);
        for (std::size_t i = 0; i < 20; ++i) {
            ASSERT_EQ(fields[i], std::string(50, static_cast<char>('a' + i)) + "\"" + std::to_string(line));
        }
    }
}

TEST(SplitLine, CountsFieldsBeyondThoseItKeeps) {
    Fields fields;
    EXPECT_EQ(splitLine(std::string(1'000'000, ','), ",", fields), 1'000'001);
    EXPECT_EQ(fields[Fields::kKept - 1], "");
    EXPECT_THROW((void)fields[Fields::kKept], std::invalid_argument);
}

TEST(SplitLine, RefusesAFieldThatIsNotThere) {
    Fields fields;
    splitLine("A99,", ",", fields);
    EXPECT_THROW((void)fields[2], std::invalid_argument);
}

TEST(PlainSplitter, KnowsNoQuotesAndAppends) {
    Array<std::string> fields{"before"};
    EXPECT_EQ(ExtendedCString::Splitter(fields, "a,\"b,c\"", ","), 3);
    EXPECT_EQ(fields, (Array<std::string>{"before", "a", "\"b", "c\""}));
}

TEST(PlainSplitter, GivesNoEmptyFieldBehindATrailingSeparator) {
    Array<std::string> fields;
    EXPECT_EQ(ExtendedCString::Splitter(fields, "a,,b,", ","), 3);
    EXPECT_EQ(fields, (Array<std::string>{"a", "", "b"}));
    fields.clear();
    EXPECT_EQ(ExtendedCString::Splitter(fields, "", ","), 0);
    EXPECT_EQ(ExtendedCString::Splitter(fields, ",", ","), 1);
}

TEST(PlainSplitter, TakesLongSeparators) {
    Array<std::string> fields;
    EXPECT_EQ(ExtendedCString::Splitter(fields, "a::b:c::", "::"), 2);
    EXPECT_EQ(fields, (Array<std::string>{"a", "b:c"}));
}

} // namespace fenmark::sima
