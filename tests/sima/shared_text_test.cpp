// Texts that share their characters.
#include "sima/text/shared_text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace fenmark::sima {

TEST(SharedText, HoldsTextsOfAnyLength) {
    for (const std::size_t length : {1U, 2U, 3U, 4U, 19U, 20U, 253U, 254U, 255U, 256U, 257U, 100'000U}) {
        std::string text(length, 'x');
        text.back() = 'y';
        SharedText made(text);
        const SharedText copy = made;
        made = "other";
        EXPECT_EQ(copy.view(), text) << length;
    }
}

TEST(SharedText, IsWhatItWasMadeOf) {
    using namespace std::string_view_literals;
    EXPECT_TRUE(SharedText().empty());
    EXPECT_EQ(SharedText(), "");
    EXPECT_TRUE(SharedText("").empty());
    EXPECT_EQ(SharedText("-38123.456000000000").view(), "-38123.456000000000");
    EXPECT_EQ(SharedText(std::string("測点")), std::string("測点"));
    EXPECT_EQ(SharedText("a\0b"sv), "a\0b"sv) << "a NUL ends nothing";
    EXPECT_FALSE(SharedText("R") == "L");
    EXPECT_EQ(SharedText("R"), SharedText(std::string_view("R")));
    EXPECT_FALSE(SharedText("R") == SharedText());
}

TEST(SharedText, ACopyKeepsItsCharacters) {
    SharedText first = std::string(100, 'x');
    const char* const characters = first.view().data();
    SharedText second = first;
    EXPECT_EQ(second.view().data(), characters) << "copies share them";
    first = "y";
    EXPECT_EQ(first, "y");
    EXPECT_EQ(second, std::string(100, 'x'));
    const SharedText third = std::move(second);
    EXPECT_EQ(third.view().data(), characters);
    SharedText& itself = first;
    first = itself;
    EXPECT_EQ(first, "y");
}

TEST(SharedText, IsAsWideAsAPointer) {
    EXPECT_EQ(sizeof(SharedText), sizeof(void*));
}

// Under ThreadSanitizer or AddressSanitizer a count that loses a user shows as characters that are freed too early.
TEST(SharedText, IsCopiedAndDroppedInSeveralThreads) {
    const SharedText text = std::string(40, 'z');
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (int& count : wrong) {
        threads.emplace_back([&text, &count] {
            for (int i = 0; i < 10000; ++i) {
                const std::vector<SharedText> copies(3, text);
                count += copies.back().view().size() == 40 ? 0 : 1;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
    EXPECT_EQ(text, std::string(40, 'z'));
}

} // namespace fenmark::sima
