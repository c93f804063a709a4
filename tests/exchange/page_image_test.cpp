// Pages as pixels, and what a page that cannot be drawn says.
#include "exchange/plan/page_fonts.h"
#include "exchange/plan/page_image.h"
#include "exchange/plan/plot.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

namespace fenmark::exchange {
namespace {

// 10 mm by 5 mm, its right half black.
const std::string kPage = R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="10mm" height="5mm" viewBox="0 0 10 5">
<rect x="5" y="0" width="5" height="5" fill="#000000"/></svg>)svg";
constexpr std::uint32_t kWhite = 0xFFFFFFFFU;
constexpr std::uint32_t kBlack = 0xFF000000U;

class Pixels {
  public:
    Pixels(int width, int height)
        : width_(width), height_(height), all_(static_cast<std::size_t>(width * height), kWhite) {}
    PagePixels page(double pixelsPerMillimetre, double left = 0.0, double top = 0.0) {
        return {
            reinterpret_cast<unsigned char*>(all_.data()), width_, height_, width_ * 4, pixelsPerMillimetre, left, top};
    }
    std::uint32_t at(int x, int y) const { return all_[static_cast<std::size_t>(y * width_ + x)]; }

  private:
    int width_;
    int height_;
    std::vector<std::uint32_t> all_;
};

TEST(PageImage, LiesWhereItsPixelsAre) {
    Pixels whole(40, 20);
    const Outcome drawn = drawPage(kPage, whole.page(4.0));
    if (!drawn && drawn.message.english.find("draws no pages") != std::string::npos) {
        GTEST_SKIP() << drawn.message.english;
    }
    ASSERT_TRUE(drawn) << drawn.message.english;
    EXPECT_EQ(whole.at(1, 1), kWhite);
    EXPECT_EQ(whole.at(18, 10), kWhite);
    EXPECT_EQ(whole.at(22, 10), kBlack);
    EXPECT_EQ(whole.at(38, 18), kBlack);
    // A part of it, three times as large: 15 pixels from its left edge the black half begins.
    Pixels part(10, 10);
    ASSERT_TRUE(drawPage(kPage, part.page(3.0, 10.0, 2.0)));
    EXPECT_EQ(part.at(3, 5), kWhite);
    EXPECT_EQ(part.at(6, 5), kBlack);
}

TEST(PageImage, APageWithoutASizeOrThatIsNoneSaysSo) {
    Pixels pixels(10, 10);
    const Outcome sizeless = drawPage("<svg xmlns=\"http://www.w3.org/2000/svg\"/>", pixels.page(1.0));
    EXPECT_FALSE(sizeless);
    EXPECT_FALSE(sizeless.message.english.empty() || sizeless.message.japanese.empty());
    const Outcome broken = drawPage("<svg width=\"10mm\" height=\"5mm\"><rect", pixels.page(1.0));
    EXPECT_FALSE(broken);
    EXPECT_FALSE(broken.message.english.empty() || broken.message.japanese.empty());
    EXPECT_EQ(pixels.at(5, 5), kWhite);
}

// As a disk that is full.
class NoRoom : public std::streambuf {
  protected:
    int_type overflow(int_type) override { return traits_type::eof(); }
    std::streamsize xsputn(const char*, std::streamsize) override { return 0; }
};

TEST(Pdf, ThatCannotBeMadeOrWrittenSaysSo) {
    Plot plot;
    plot.pages = {kPage};
    std::ostringstream whole;
    const Outcome written = writePdf(plot, whole);
    if (!written && whole.str().empty()) {
        GTEST_SKIP() << written.message.english;
    }
    ASSERT_TRUE(written) << written.message.english;
    EXPECT_TRUE(whole.str().starts_with("%PDF-"));
    NoRoom noRoom;
    std::ostream full(&noRoom);
    const Outcome refused = writePdf(plot, full);
    EXPECT_FALSE(refused);
    EXPECT_FALSE(refused.message.english.empty() || refused.message.japanese.empty());
    plot.pages.emplace_back("<svg width=\"10mm\" height=\"5mm\"><rect");
    std::ostringstream broken;
    const Outcome page = writePdf(plot, broken);
    EXPECT_FALSE(page);
    EXPECT_NE(page.message.english.find("the page cannot be drawn"), std::string::npos) << page.message.english;
}

TEST(Pdf, PagesAreAsLargeAsTheirPaper) {
    Plot plot;
    for (const char* size : {"254 127", "127 381"}) { // millimetres: 72 points are 25.4 of them
        plot.pages.push_back("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + std::string(size) + "\"/>");
    }
    std::ostringstream out;
    const Outcome written = writePdf(plot, out);
    if (!written && out.str().empty()) {
        GTEST_SKIP() << written.message.english;
    }
    ASSERT_TRUE(written) << written.message.english;
    const std::size_t first = out.str().find("/MediaBox [ 0 0 720 360 ]");
    const std::size_t second = out.str().find("/MediaBox [ 0 0 360 1080 ]");
    EXPECT_LT(first, second);
    EXPECT_NE(second, std::string::npos);
}

// Of letters for private use no font of a machine has a shape.
TEST(Pdf, LettersThatNoFontHasAreToldOnceEach) {
    const auto noted = [](const std::string& content) {
        const std::string head = "<svg width=\"10mm\" height=\"5mm\"><title>\U0010FFF0</title>";
        return notesOfFonts({head + content + "</svg>", head + "<path d=\"M0 0\"/></svg>"});
    };
    if (noted("<text>\U0010FFF1</text>").empty()) {
        GTEST_SKIP() << "built without librsvg";
    }
    EXPECT_EQ(noted("<text x=\"1\"> \u3000&amp;\u200D</text>"), Notes{}) << "no font at all is installed";
    const auto expectTold = [&](const std::string& content, std::size_t count, const std::string& letters) {
        Note note{NoteCode::LettersWithoutFont, count};
        note.letters = letters;
        EXPECT_EQ(noted(content), Notes{note});
    };
    expectTold("<text>\U0010FFF2 <tspan x=\"1\">A\U0010FFF1</tspan>\U0010FFF2</text><desc>\U0010FFF3</desc>", 2,
               "\U0010FFF1\U0010FFF2");
    expectTold("<g><text>\U00100009\U00100008\U00100007\U00100006\U00100005</text><text>\U00100004\U00100003\U00100002"
               "\U00100001</text></g>",
               9, "\U00100001\U00100002\U00100003\U00100004\U00100005\U00100006\U00100007\U00100008");
}

TEST(PageImage, DecimalsAreTakenOffOneByOne) {
    std::string_view text = "12.50 0.25mm";
    EXPECT_EQ(leadingReal(text), 12.5);
    text.remove_prefix(1);
    EXPECT_EQ(leadingReal(text), 0.25);
    EXPECT_EQ(text, "mm");
    EXPECT_EQ(leadingReal(text), 0.0);
    EXPECT_EQ(text, "mm");
}

} // namespace
} // namespace fenmark::exchange
