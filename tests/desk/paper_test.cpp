// Paper: pages of plans, sections and documents, the title block that the drawing keeps, PDF and printers.
#include "desk_test_support.h"

#include "desk/paper/page_painter.h"
#include "desk/paper/paper_dialog.h"
#include "desk/window/workbench.h"
#include "drawing/geopackage/drawing_texts.h"
#include "support/drawing_texts_support.h"

#include <QFile>
#include <QPrinter>

namespace fenmark::desk::test {
namespace {

TEST(PaperJob, ReadsScalesAndOffsets) {
    EXPECT_EQ(scaleOf("1:500"), 500);
    EXPECT_EQ(scaleOf(" 250 "), 250);
    EXPECT_FALSE(scaleOf("自動"));
    EXPECT_FALSE(scaleOf("0"));
    EXPECT_FALSE(scaleOf("1:1.5"));
    EXPECT_EQ(offsetsOf("-5, 0,5"), (std::vector<double>{-5.0, 0.0, 5.0}));
    EXPECT_FALSE(offsetsOf("5,"));
    EXPECT_FALSE(offsetsOf("nan"));
}

std::string whyNot(const exchange::Plot& plot) {
    return plot.failure ? exchange::wording(*plot.failure, Language::English) : std::string();
}

struct Paper : DeskWindow {
    // The plot of a job on the window's drawing.
    exchange::Plot plotOf(PaperKind kind, const exchange::PlotOptions& options = {},
                          const drawing::DrawingTexts& texts = {}) {
        PaperJob job;
        job.kind = kind;
        job.options = options;
        job.texts = texts;
        return pagesOf(drawing(), job);
    }
    // Acts on the dialog in place of the user.
    void withDialog(PaperKind kind, const std::function<void(PaperDialog&)>& act) {
        window->workbench().beforePaper = [&](PaperDialog& dialog) {
            act(dialog);
            return false;
        };
        window->workbench().showPaper(kind);
    }
    static void choose(PaperDialog& dialog, const char* box, int index) {
        auto* combo = dialog.findChild<QComboBox*>(QLatin1String(box));
        ASSERT_NE(combo, nullptr);
        combo->setCurrentIndex(index);
        emit combo->activated(index);
    }
    static bool holds(const exchange::Plot& plot, const char* text) {
        return std::any_of(plot.pages.begin(), plot.pages.end(),
                           [&](const std::string& page) { return page.find(text) != std::string::npos; });
    }
};

TEST_F(Paper, APlanHasItsPaperOrientationScaleAndTitleBlock) {
    import(folder.example(QStringLiteral("road.sim")));
    exchange::PlotOptions options;
    options.paper = "A2";
    options.upright = true;
    options.scale = 2500;
    const exchange::Plot plot = plotOf(
        PaperKind::Plan, options, {{"title/heading", "道路平面図"}, {"title/project", "国道改良"}, {"other", "x"}});
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    EXPECT_EQ(pageSize(plot.pages[0]), QSizeF(420.0, 594.0));
    EXPECT_TRUE(holds(plot, "1:2500"));
    EXPECT_TRUE(holds(plot, ">道路平面図<"));
    EXPECT_TRUE(holds(plot, ">業務名<"));
    EXPECT_TRUE(holds(plot, ">国道改良<"));
    EXPECT_FALSE(holds(plot, "平　面　図"));
    EXPECT_TRUE(holds(plot, "凡例"));
}

TEST_F(Paper, APartOfTheDrawingStandsInTheMiddleAtItsScale) {
    import(folder.example(QStringLiteral("road.sim")));
    const drawing::Extent& all = drawing().extent();
    exchange::PlotOptions options;
    options.scale = 250;
    EXPECT_TRUE(plotOf(PaperKind::Plan, options).failure) << "all of it has no room";
    drawing::Extent part;
    part.add(all.minX, all.minY);
    part.add(all.minX + 30.0, all.minY + 30.0);
    options.extent = part;
    const exchange::Plot plot = plotOf(PaperKind::Plan, options);
    ASSERT_EQ(plot.pages.size(), 1U) << whyNot(plot);
    EXPECT_TRUE(holds(plot, "1:250"));
}

TEST_F(Paper, EveryKindHasPagesThatCanBeDrawn) {
    import(folder.example(QStringLiteral("road.sim")));
    import(folder.example(QStringLiteral("cadastral.sim")));
    for (std::size_t kind = 0; kind < kPaperKinds; ++kind) {
        exchange::PlotOptions options;
        if (!hasScale(static_cast<PaperKind>(kind))) {
            options.paper = "A4";
        }
        const exchange::Plot plot = plotOf(static_cast<PaperKind>(kind), options, {{"title/project", "業務"}});
        ASSERT_FALSE(plot.pages.empty()) << kind << whyNot(plot);
        EXPECT_TRUE(holds(plot, "業務")) << kind;
        Outcome drawn;
        const QImage image = pageImage(plot.pages.back(), 1.0, drawn);
        EXPECT_TRUE(drawn) << kind << drawn.message.english;
        ASSERT_FALSE(image.isNull());
        EXPECT_EQ(image.size(), pageSize(plot.pages.back()).toSize());
        bool ink = false;
        for (int y = 0; y < image.height() && !ink; ++y) {
            for (int x = 0; x < image.width() && !ink; ++x) {
                ink = image.pixelColor(x, y).lightness() < 128;
            }
        }
        EXPECT_TRUE(ink) << kind;
    }
}

TEST_F(Paper, TheAreaTablesHaveEveryLotAndNoRowIsLost) {
    import(folder.example(QStringLiteral("cadastral.sim")));
    exchange::PlotOptions options;
    options.paper = "A4";
    const exchange::Plot plot = plotOf(PaperKind::Lots, options);
    ASSERT_GT(plot.pages.size(), 10U);
    std::size_t figures = 0;
    std::size_t totals = 0;
    for (const std::string& page : plot.pages) {
        for (std::size_t at = page.find("class=\"lot\""); at != std::string::npos;
             at = page.find("class=\"lot\"", at + 1)) {
            ++figures;
        }
        for (std::size_t at = page.find(">倍面積"); at != std::string::npos; at = page.find(">倍面積", at + 1)) {
            ++totals;
        }
    }
    EXPECT_EQ(figures, 48U);
    EXPECT_EQ(totals, 48U);
    EXPECT_TRUE(holds(plot, "地積一覧"));
    const std::string last =
        "－ " + std::to_string(plot.pages.size()) + " / " + std::to_string(plot.pages.size()) + " －";
    EXPECT_TRUE(holds(plot, last.c_str()));
    options.upright = true;
    EXPECT_EQ(pageSize(plotOf(PaperKind::Lots, options).pages[0]), QSizeF(210.0, 297.0));
}

TEST_F(Paper, TheDialogMakesPagesAndKeepsTheTitleBlockInTheDrawing) {
    import(folder.example(QStringLiteral("road.sim")));
    const QString path = folder.path(QStringLiteral("road.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_FALSE(window->isWindowModified());
    const QString pdf = folder.path(QStringLiteral("road.pdf"));
    withDialog(PaperKind::Along, [&](PaperDialog& dialog) {
        EXPECT_GT(dialog.plot().pages.size(), 1U);
        EXPECT_TRUE(holds(dialog.plot(), "合致線"));
        dialog.showPage(1);
        EXPECT_EQ(dialog.page(), 1);
        choose(dialog, "kind", static_cast<int>(PaperKind::Plan));
        ASSERT_EQ(dialog.plot().pages.size(), 1U) << whyNot(dialog.plot());
        auto* project = dialog.findChild<QLineEdit*>(QStringLiteral("title/project"));
        ASSERT_NE(project, nullptr);
        project->setText(QStringLiteral("市道3号線"));
        emit project->editingFinished();
        EXPECT_TRUE(holds(dialog.plot(), "市道3号線"));
        auto* scale = dialog.findChild<QComboBox*>(QStringLiteral("scale"));
        scale->setEditText(QStringLiteral("1:20"));
        emit scale->lineEdit()->editingFinished();
        EXPECT_TRUE(dialog.plot().pages.empty());
        EXPECT_TRUE(dialog.message().contains(QStringLiteral("用紙に入りません")));
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("pdf"))->isEnabled());
        scale->setEditText(QStringLiteral("1:2500"));
        emit scale->lineEdit()->editingFinished();
        dialog.askPath = [&](QWidget*, const QString&, const QString& proposal, const QString&) {
            EXPECT_TRUE(proposal.endsWith(QStringLiteral("road.pdf")));
            return pdf;
        };
        EXPECT_TRUE(dialog.savePdf()) << dialog.message().toStdString();
    });
    QFile file(pdf);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().startsWith("%PDF-"));
    EXPECT_TRUE(window->isWindowModified());
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_FALSE(window->isWindowModified());
    window->newDrawing();
    EXPECT_TRUE(window->workbench().texts().empty());
    ASSERT_TRUE(window->showDrawing(path.toStdString()));
    EXPECT_EQ(window->workbench().texts().at("title/project"), "市道3号線");
}

TEST_F(Paper, PrintsEveryPageAtItsSize) {
    import(folder.example(QStringLiteral("road.sim")));
    const exchange::Plot plot = plotOf(PaperKind::Profile);
    ASSERT_FALSE(plot.pages.empty());
    const QString path = folder.path(QStringLiteral("printed.pdf"));
    {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        printer.setResolution(72);
        printer.setPageSize(QPageSize(QPageSize::A3));
        printer.setPageOrientation(QPageLayout::Landscape);
        EXPECT_TRUE(printPages(plot, printer));
    }
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pdf = file.readAll();
    EXPECT_TRUE(pdf.startsWith("%PDF-"));
    EXPECT_EQ(pdf.count("/Type /Page\n"), static_cast<qsizetype>(plot.pages.size()));
}

TEST_F(Paper, AnEmptyDrawingSaysThatThereIsNothingToPrint) {
    withDialog(PaperKind::Lots, [&](PaperDialog& dialog) {
        EXPECT_TRUE(dialog.plot().pages.empty());
        EXPECT_FALSE(dialog.message().isEmpty());
        EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("print"))->isEnabled());
        choose(dialog, "kind", static_cast<int>(PaperKind::Profile));
        EXPECT_TRUE(dialog.plot().pages.empty());
    });
}

TEST_F(Paper, AFieldThatHoldsNoNumberIsToldAndMakesNoPages) {
    import(folder.example(QStringLiteral("road.sim")));
    struct Wrong {
        const char* field;
        const char* typed;
    };
    for (const auto& [field, typed] : {Wrong{"offsets", "-5,0,5m"},
                                       {"offsets", "1e999"},
                                       {"offsets", "５"},
                                       {"pitch", "20m"},
                                       {"pitch", "-1"},
                                       {"pitch", "nan"},
                                       {"pitch", "２０"}}) {
        withDialog(PaperKind::Stakes, [&, field = field, typed = typed](PaperDialog& dialog) {
            EXPECT_FALSE(dialog.plot().pages.empty());
            auto* edit = dialog.findChild<QLineEdit*>(QLatin1String(field));
            edit->setText(QString::fromUtf8(typed));
            emit edit->editingFinished();
            EXPECT_TRUE(dialog.plot().pages.empty()) << typed;
            EXPECT_TRUE(dialog.message().contains(QString::fromUtf8(typed)));
            EXPECT_FALSE(dialog.findChild<QPushButton*>(QStringLiteral("pdf"))->isEnabled());
            edit->setText(QStringLiteral(" 5 "));
            emit edit->editingFinished();
            EXPECT_FALSE(dialog.plot().pages.empty());
        });
    }
    withDialog(PaperKind::Plan, [&](PaperDialog& dialog) {
        auto* scale = dialog.findChild<QComboBox*>(QStringLiteral("scale"));
        scale->setEditText(QStringLiteral("1:2500.5"));
        emit scale->lineEdit()->editingFinished();
        EXPECT_TRUE(dialog.plot().pages.empty());
        EXPECT_TRUE(dialog.message().contains(QStringLiteral("1:2500.5")));
    });
}

TEST_F(Paper, AButtonPressedByItsKeyTakesWhatStandsInTheLines) {
    import(folder.example(QStringLiteral("road.sim")));
    withDialog(PaperKind::Stakes, [&](PaperDialog& dialog) {
        bool asked = false;
        dialog.askPath = [&](QWidget*, const QString&, const QString&, const QString&) {
            asked = true;
            EXPECT_TRUE(holds(dialog.plot(), "typed"));
            return QString();
        };
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        auto* author = dialog.findChild<QLineEdit*>(QStringLiteral("title/author"));
        author->setFocus();
        QTest::keyClicks(author, QStringLiteral("typed"));
        QTest::keyClick(author, Qt::Key_S, Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return asked; }, kPatience));
        auto* offsets = dialog.findChild<QLineEdit*>(QStringLiteral("offsets"));
        offsets->setFocus();
        QTest::keyClicks(offsets, QStringLiteral("m"));
        asked = false;
        EXPECT_FALSE(dialog.savePdf());
        EXPECT_FALSE(dialog.print());
        EXPECT_FALSE(asked) << "there are no pages for an offset of 0m";
        dialog.hide();
    });
}

TEST_F(Paper, TheDialogGoesWithTheProgramAndTheFocusInALine) {
    withDialog(PaperKind::Plan, [&](PaperDialog& dialog) {
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        auto* author = dialog.findChild<QLineEdit*>(QStringLiteral("title/author"));
        author->setFocus();
        ASSERT_TRUE(author->hasFocus());
        QTest::keyClicks(author, QStringLiteral("typed"));
        window->closeAtOnce(); // as a signal does, and the dialog goes as it stands
    });
    EXPECT_TRUE(window->workbench().texts().empty()) << "nobody has taken it";
}

TEST_F(Paper, APdfWhoseExtensionIsAddedReplacesNoFileUnasked) {
    import(folder.example(QStringLiteral("road.sim")));
    const QString there = folder.write(QStringLiteral("there.pdf"), "somebody's");
    withDialog(PaperKind::Profile, [&](PaperDialog& dialog) {
        int asked = 0;
        dialog.askPath = [&](QWidget*, const QString&, const QString&, const QString&) {
            return ++asked == 1 ? folder.path(QStringLiteral("there")) : QString();
        };
        EXPECT_FALSE(dialog.savePdf());
        EXPECT_EQ(asked, 2);
    });
    QFile file(there);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "somebody's");
}

TEST_F(Paper, TextsThatAnotherProgramWroteMeanwhileStay) {
    import(folder.example(QStringLiteral("road.sim")));
    const QString path = folder.path(QStringLiteral("road.gpkg"));
    window->questions().save = [&](QWidget*, const QString&, const QString&, const QString&) { return path; };
    ASSERT_TRUE(window->saveDrawing());
    ASSERT_TRUE(drawing::writeTexts(path.toStdString(), {{"title/author", "another"}}));
    window->session().addLayer("L");
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_EQ(drawing::readTexts(path.toStdString()).at("title/author"), "another");
    withDialog(PaperKind::Plan, [&](PaperDialog& dialog) {
        auto* project = dialog.findChild<QLineEdit*>(QStringLiteral("title/project"));
        project->setText(QStringLiteral("ours"));
        emit project->editingFinished();
    });
    ASSERT_TRUE(window->saveDrawing());
    EXPECT_EQ(drawing::readTexts(path.toStdString()),
              (drawing::DrawingTexts{{"title/author", "another"}, {"title/project", "ours"}}));
}

} // namespace
} // namespace fenmark::desk::test
