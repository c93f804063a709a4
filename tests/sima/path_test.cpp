// Paths as texts.
#include "sima/text/path.h"

#include <gtest/gtest.h>

namespace fenmark::sima {

TEST(TextOfPath, IsAPathInUtf8AsItIs) {
    for (const char* path : {"", "a.sim", "/", "/測量/座標.sim", "a//b/", "C:\\測量\\座標.sim"}) {
        EXPECT_EQ(textOfPath(path), path);
    }
}

TEST(TextOfPath, ReadsThePartsThatAreNoUtf8InCodePage932) {
    EXPECT_EQ(textOfPath("\x8D\xC0\x95\x57.sim"), "座標.sim");
    EXPECT_EQ(textOfPath("/測量/\x8D\xC0\x95\x57/座標/\xB1.sim"), "/測量/座標/座標/ｱ.sim");
    EXPECT_EQ(textOfPath("\xFF/\x81"), "\xEF\xBF\xBD/\xEF\xBF\xBD");
}

} // namespace fenmark::sima
