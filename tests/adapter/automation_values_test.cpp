// Strings, points and references on their way to automation objects.
#include "scripted_host.h"

#include "host/adapter/automation_values.h"
#include "host/boundary/automation_error.h"

#include <gtest/gtest.h>

#include <limits>

#if defined(__SANITIZE_ADDRESS__)
#define FENMARK_UNDER_SANITIZER 1
#elif defined(__has_feature)
#define FENMARK_UNDER_SANITIZER __has_feature(address_sanitizer)
#else
#define FENMARK_UNDER_SANITIZER 0
#endif

namespace fenmark {
namespace {

TEST(AutomationValues, PointIsASafeArrayOfThreeRealsFromZero) {
    scripted::Host host;
    const mirdane::Variant point = host::pointVariant({1.5, -2.5, 3.5});
    ASSERT_EQ(point.kind(), mirdane::Variant::Kind::RealArray);
    ASSERT_NE(point.realArray(), nullptr);
    EXPECT_EQ(point.realArray()->lowerBound(), 0);
    EXPECT_EQ(point.realArray()->values(), (std::vector<double>{1.5, -2.5, 3.5}));
}

TEST(AutomationValues, ArrayThatCannotBeMadeRaisesFailure) {
    scripted::Host host;
    host.arraysLeft = 0;
    try {
        host::pointVariant({});
        FAIL() << "nothing was raised";
    } catch (const host::AutomationError& error) {
        EXPECT_EQ(static_cast<std::uint32_t>(error.status()), 0x80004005U);
    }
}

TEST(AutomationValues, StringVariantHoldsItsText) {
    const mirdane::Variant text = host::stringVariant("標準");
    EXPECT_EQ(text.kind(), mirdane::Variant::Kind::String);
    EXPECT_EQ(text.text(), "標準");
}

TEST(AutomationValues, StringThatCannotBeAllocatedRaisesOutOfMemory) {
#if FENMARK_UNDER_SANITIZER
    GTEST_SKIP() << "the sanitizer ends the program on an allocation of this size";
#else
    // Longer than any memory, yet shorter than the longest string that may be asked for.
    volatile std::size_t size = std::numeric_limits<std::size_t>::max() / 4;
    const char character = 'x';
    try {
        host::automationString(std::string_view(&character, size));
        FAIL() << "nothing was raised";
    } catch (const host::AutomationError& error) {
        EXPECT_EQ(static_cast<std::uint32_t>(error.status()), 0x8007000EU);
    }
#endif
}

} // namespace
} // namespace fenmark
