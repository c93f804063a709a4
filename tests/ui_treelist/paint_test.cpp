// What is seen: colours of rows, boxes, lines and grid in a picture of the control.
#include <QImage>
#include <QPixmap>

#include "ui/treelist/tree_list_dc.h"
#include "ui/treelist/tree_list_resource.h"
#include "ui_treelist/tree_list_fixture.h"

namespace fenmark::ui::treelist {
namespace {

class PaintTest : public TreeListTest {
  protected:
    [[nodiscard]] QImage picture() const { return list_->viewport()->grab().toImage(); }
    // Number of pixels of a colour within a rectangle.
    static int pixels(const QImage& image, const QRect& rect, const QColor& color) {
        int count = 0;
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                count += image.pixelColor(x, y).rgb() == color.rgb() ? 1 : 0;
            }
        }
        return count;
    }
    [[nodiscard]] QRect part(const CTreeListItem* item, int flag) const {
        QRect rect;
        list_->HitTest(at(item, flag), nullptr, nullptr, &rect);
        return rect;
    }
};

TEST_F(PaintTest, SelectedRowsAreFilledAndTheFocusCellIsMarkedOnAllFourSides) {
    list_->SetStyle(list_->GetStyle() | kStyleHorizontalGrid | kStyleVerticalGrid);
    list_->SelectItem(b_, 1);
    const QImage image = picture();
    const QRect row = list_->GetItemRect(b_);
    EXPECT_EQ(image.pixelColor(row.left() + 180, row.center().y()), colorOf(TreeListColor::SelectedRowActive));
    const QRect cell = list_->GetItemRect(b_, 1);
    EXPECT_EQ(image.pixelColor(cell.center().x(), cell.center().y()), colorOf(TreeListColor::FocusCell));
    const QColor frame = colorOf(TreeListColor::FocusFrame).darker(130);
    EXPECT_EQ(pixels(image, QRect(cell.left(), cell.top(), cell.width(), 1), frame), cell.width());
    EXPECT_EQ(pixels(image, QRect(cell.left(), cell.bottom(), cell.width(), 1), frame), cell.width());
    EXPECT_EQ(pixels(image, QRect(cell.right(), cell.top(), 1, cell.height()), frame), cell.height());
}

TEST_F(PaintTest, WithoutTheFocusTheSelectionIsPale) {
    list_->SelectItem(b_, 1);
    list_->clearFocus();
    const QRect row = list_->GetItemRect(b_);
    EXPECT_EQ(picture().pixelColor(row.left() + 180, row.center().y()), colorOf(TreeListColor::SelectedRow));
}

TEST_F(PaintTest, AMarkIsSeenInCheckedAndMixedBoxesOnly) {
    const QColor mark = colorOf(TreeListColor::BoxMark);
    EXPECT_EQ(pixels(picture(), part(a_, kHitCheck), mark), 0);
    list_->SetCheck(a2_, 1);
    const QImage image = picture();
    EXPECT_GT(pixels(image, part(a2_, kHitCheck), mark), 4);
    EXPECT_GE(pixels(image, part(a_, kHitCheck), mark), 25) << "mixed";
    EXPECT_EQ(pixels(image, part(b_, kHitCheck), mark), 0);
}

TEST_F(PaintTest, TreeLinesAreDottedOnePixelInTwo) {
    const QRect button = part(a1_, kHitButton);
    const QImage image = picture();
    const int x = button.x() + 8;
    const int top = button.y();
    const QColor line = colorOf(TreeListColor::Line);
    const int above = pixels(image, QRect(x, top, 1, 4), line);
    EXPECT_EQ(above, 2);
    list_->SetStyle(list_->GetStyle() & ~std::uint32_t{kStyleTreeLines});
    EXPECT_EQ(pixels(picture(), QRect(x, top, 1, 4), line), 0);
}

TEST_F(PaintTest, LinesOfTheFirstLevelNeedTheirOwnBit) {
    const QRect button = part(b_, kHitButton);
    const QColor line = colorOf(TreeListColor::Line);
    const QRect above(button.x() + 8, button.y(), 1, 4);
    EXPECT_EQ(pixels(picture(), above, line), 2);
    list_->SetStyle(list_->GetStyle() & ~std::uint32_t{kStyleRootLines});
    EXPECT_EQ(pixels(picture(), above, line), 0);
}

TEST_F(PaintTest, AButtonDisappearsOnceALeafWasExpanded) {
    const QRect button = part(b_, kHitButton);
    const QRect square(button.x() + 5, button.y() + 5, 7, 7);
    list_->SetStyle(list_->GetStyle() & ~std::uint32_t{kStyleTreeLines});
    const QColor back = list_->GetBkColor();
    EXPECT_LT(pixels(picture(), square, back), 49);
    list_->Expand(b_, ExpandCode::Toggle);
    EXPECT_EQ(pixels(picture(), square, back), 49);
}

TEST_F(PaintTest, GridLinesAreDrawnWithTheirBits) {
    const QRect row = list_->GetItemRect(b_);
    const QColor grid = colorOf(TreeListColor::HorizontalGrid);
    EXPECT_NE(picture().pixelColor(150, row.bottom()), grid);
    setStyle(kStyleHorizontalGrid | kStyleVerticalGrid);
    EXPECT_EQ(picture().pixelColor(150, row.bottom()), grid);
    EXPECT_EQ(picture().pixelColor(199, row.center().y()), colorOf(TreeListColor::VerticalGrid));
}

TEST_F(PaintTest, TextsAreDrawnInTheTextColourWithTheirAlignment) {
    list_->SetTextColor(Qt::red);
    list_->SetItemText(b_, 1, "|||");
    const auto inked = [&](const QRect& rect) {
        const QImage image = picture();
        int count = 0;
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                const QColor color = image.pixelColor(x, y);
                count += color.red() > color.green() + 60 ? 1 : 0;
            }
        }
        return count;
    };
    const QRect cell = list_->GetItemRect(b_, 1);
    const QRect left(cell.left(), cell.top(), cell.width() / 3, cell.height());
    const QRect right(cell.right() - cell.width() / 3, cell.top(), cell.width() / 3, cell.height());
    EXPECT_GT(inked(left), 0);
    EXPECT_EQ(inked(right), 0);
    list_->SetColumnFormat(1, 0x104244);
    EXPECT_EQ(inked(left), 0);
    EXPECT_GT(inked(right), 0);
    list_->SetColumnFormat(1, 0x104444);
    EXPECT_EQ(inked(left), 0);
    EXPECT_EQ(inked(right), 0);
    EXPECT_GT(inked(cell), 0);
}

TEST_F(PaintTest, JapaneseTextsAreDrawn) {
    list_->SetItemText(b_, 1, "座標");
    const QRect cell = list_->GetItemRect(b_, 1);
    EXPECT_LT(pixels(picture(), cell, list_->GetBkColor()), cell.width() * cell.height());
    EXPECT_EQ(list_->GetItemText(b_, 1), "座標");
}

TEST_F(PaintTest, ImagesFollowExpansionAndSelection) {
    const auto plain = [](const QColor& color) {
        QPixmap pixmap(16, 16);
        pixmap.fill(color);
        return QIcon(pixmap);
    };
    const QColor colors[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow};
    list_->SetImageList({plain(colors[0]), plain(colors[1]), plain(colors[2]), plain(colors[3])});
    setStyle(kStyleImages);
    list_->SetItemState(a1_, kItemImage, kItemImage);
    const auto seen = [&] {
        const QRect image = part(a1_, kHitImage);
        return picture().pixelColor(image.center());
    };
    EXPECT_EQ(seen(), colors[0]);
    list_->Expand(a1_, ExpandCode::Expand);
    EXPECT_EQ(seen(), colors[1]);
    list_->SelectItem(a1_, 1);
    EXPECT_EQ(seen(), colors[3]);
    list_->Expand(a1_, ExpandCode::Collapse);
    EXPECT_EQ(seen(), colors[2]);
}

TEST_F(PaintTest, ColoursOfBackgroundAndTheDisabledStateAreSeen) {
    list_->SetBkColor(QColor(1, 2, 3));
    EXPECT_EQ(picture().pixelColor(480, 200), QColor(1, 2, 3));
    list_->setEnabled(false);
    EXPECT_EQ(picture().pixelColor(480, 200), colorOf(TreeListColor::DisabledBackground));
}

TEST_F(PaintTest, TheSurfaceCopiesTheAreaWhereItBelongs) {
    CTreeListDC surface;
    QPixmap window(40, 40);
    window.fill(Qt::white);
    QPainter& painter = surface.begin(QRect(10, 10, 20, 20), 1.0);
    painter.fillRect(QRect(0, 0, 40, 40), Qt::black);
    painter.fillRect(QRect(12, 14, 2, 2), Qt::red);
    QPainter to(&window);
    surface.copyTo(to);
    to.end();
    const QImage image = window.toImage();
    EXPECT_EQ(image.pixelColor(9, 10), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(12, 14), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(30, 29), QColor(Qt::white));
}

TEST_F(PaintTest, AHighResolutionSurfaceHoldsAllDevicePixels) {
    CTreeListDC surface;
    QPixmap window(40, 40);
    window.setDevicePixelRatio(2.0);
    window.fill(Qt::white);
    QPainter& painter = surface.begin(QRect(0, 0, 20, 20), 2.0);
    painter.fillRect(QRect(0, 0, 20, 20), Qt::white);
    painter.fillRect(QRectF(5, 5, 0.5, 0.5), Qt::red);
    QPainter to(&window);
    surface.copyTo(to);
    to.end();
    const QImage image = window.toImage();
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(11, 11), QColor(Qt::white));
}

TEST_F(PaintTest, OneRowOrManyDeepRowsPaintWithoutAWalkFromTheFirst) {
    CTreeListItem* parent = c_;
    for (int i = 0; i < 300; ++i) {
        parent = list_->InsertItem("deep", parent);
    }
    list_->EnsureVisible(parent);
    list_->SelectItem(parent, 0);
    const QRect row = list_->GetItemRect(parent);
    EXPECT_EQ(picture().pixelColor(180, row.center().y()), colorOf(TreeListColor::FocusCell));
}

TEST_F(PaintTest, ACutTextBeginsWhereTheOthersBegin) {
    const auto firstInk = [&](const QImage& image, const QRect& cell) {
        for (int x = cell.left(); x <= cell.right(); ++x) {
            for (int y = cell.top(); y < cell.bottom(); ++y) {
                if (image.pixelColor(x, y) != list_->GetBkColor()) {
                    return x - cell.left();
                }
            }
        }
        return -1;
    };
    list_->SetItemText(b_, 1, "|");
    list_->SetItemText(c_, 1, "|" + QString(60, 'w'));
    const QImage image = picture();
    const int whole = firstInk(image, list_->GetItemRect(b_, 1));
    EXPECT_GE(whole, 3);
    EXPECT_EQ(firstInk(image, list_->GetItemRect(c_, 1)), whole);
}

TEST_F(PaintTest, ALightInkTurnsDarkOnTheLightFillsOfSelectionAndFocus) {
    list_->SetBkColor(QColor(30, 30, 30));
    list_->SetTextColor(Qt::white);
    list_->SetItemText(b_, 1, QString(5, QChar(0x2588)));
    const QRect cell = list_->GetItemRect(b_, 1);
    EXPECT_GT(pixels(picture(), cell, Qt::white), 0);
    list_->SelectItem(b_, 1);
    const QImage image = picture();
    EXPECT_EQ(pixels(image, cell, Qt::white), 0);
    EXPECT_GT(pixels(image, cell, Qt::black), 0);
}

} // namespace
} // namespace fenmark::ui::treelist
