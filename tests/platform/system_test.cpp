// Paths, the time, libraries, streams and the language of messages.
#include "platform/clock.h"
#include "platform/library.h"
#include "platform/memory.h"
#include "platform/paths.h"
#include "platform/process.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace platform = fenmark::platform;

// The variables that say the language, as they were, at the end of a test.
class LanguageVariables {
  public:
    LanguageVariables() {
        for (const char* name : kNames) {
            const char* const value = std::getenv(name);
            values_.push_back(value == nullptr ? std::nullopt : std::optional<std::string>(value));
            ::unsetenv(name);
        }
    }
    ~LanguageVariables() {
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            if (values_[i]) {
                ::setenv(kNames[i], values_[i]->c_str(), 1);
            } else {
                ::unsetenv(kNames[i]);
            }
        }
    }
    LanguageVariables(const LanguageVariables&) = delete;
    LanguageVariables& operator=(const LanguageVariables&) = delete;

  private:
    static constexpr std::array<const char*, 3> kNames = {"LC_ALL", "LC_MESSAGES", "LANG"};
    std::vector<std::optional<std::string>> values_;
};

TEST(Paths, KeepTheirBytes) {
    for (const char* path : {"a.sim", "/測量/道路.sim", "C:\\測量\\a.sim", "sub/r.sim", "\x83\x5c.sim", ""}) {
        EXPECT_EQ(platform::utf8Of(platform::pathOf(path)), path);
        EXPECT_EQ(platform::typedPath(path), path) << "a backslash is an ordinary character of a name here";
        EXPECT_EQ(platform::pathForLibraries(path), path);
    }
    EXPECT_EQ(platform::kPathSeparators, "\\/");
}

TEST(Clock, TellsTheTimeInUtc) {
    EXPECT_TRUE(std::regex_match(platform::utcNow(),
                                 std::regex("20[2-9][0-9]-[01][0-9]-[0-3][0-9]T[0-2][0-9]:[0-5][0-9]:[0-5][0-9]Z")))
        << platform::utcNow();
}

TEST(Library, GivesFunctionsAndSaysWhyNot) {
    platform::Library library;
    const fenmark::Outcome none = library.open("/there/is/no/such/library.so");
    EXPECT_FALSE(none);
    EXPECT_NE(none.message.english, "");
    EXPECT_EQ(library.function<double(double)>("cos"), nullptr) << "nothing is open";
    ASSERT_TRUE(library.open("libm.so.6"));
    double (*const cosine)(double) = library.function<double(double)>("cos");
    ASSERT_NE(cosine, nullptr);
    EXPECT_EQ(cosine(0.0), 1.0);
    EXPECT_EQ(library.function<void()>("no_such_function"), nullptr);
    library.close();
    EXPECT_EQ(library.function<double(double)>("cos"), nullptr);
}

TEST(Memory, AWishForLargePagesChangesNothing) {
    std::vector<char> memory(std::size_t{1} << 20, 'x');
    platform::wishLargePages(memory.data(), memory.size());
    EXPECT_EQ(memory, std::vector<char>(std::size_t{1} << 20, 'x'));
}

TEST(Language, IsThatOfTheFirstVariableSet) {
    const LanguageVariables kept;
    EXPECT_EQ(platform::messageLanguage(), "");
    ::setenv("LANG", "ja_JP.UTF-8", 1);
    EXPECT_EQ(platform::messageLanguage(), "ja");
    ::setenv("LC_MESSAGES", "en_US.UTF-8", 1);
    EXPECT_EQ(platform::messageLanguage(), "en");
    ::setenv("LC_ALL", "ja", 1);
    EXPECT_EQ(platform::messageLanguage(), "ja");
    ::setenv("LC_ALL", "", 1);
    EXPECT_EQ(platform::messageLanguage(), "en") << "an empty variable is none";
    ::setenv("LC_MESSAGES", "C.UTF-8", 1);
    EXPECT_EQ(platform::messageLanguage(), "") << "the C locale names no language";
}

TEST(Arguments, AreThoseBehindTheName) {
    std::string name = "fenmark";
    std::string first = "測量.sim";
    std::string second = "*.sim";
    std::array<char*, 4> values = {name.data(), first.data(), second.data(), nullptr};
    EXPECT_EQ(platform::programArguments(3, values.data()), (std::vector<std::string>{"測量.sim", "*.sim"}));
    EXPECT_TRUE(platform::programArguments(0, values.data() + 3).empty());
}

} // namespace
