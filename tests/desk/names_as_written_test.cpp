// Names that look like marked-up text are shown as they are written, and no file that they name is read.
#include "desk_test_support.h"

#include "desk/plan/plan_text.h"

#include <QLabel>
#include <QMessageBox>
#include <QTextDocument>

namespace fenmark::desk::test {
namespace {

constexpr const char* kMarkedUp = "<img src=\"/dev/null\"><b>A</b>";

TEST(AsWritten, IsThePlainTextAlsoOfWhatLooksMarkedUp) {
    for (const char* text : {kMarkedUp, "<table>", "点1", "a < b", "a\nb"}) {
        const QString shown = asWritten(QString::fromUtf8(text));
        QTextDocument document;
        if (Qt::mightBeRichText(shown)) {
            document.setHtml(shown);
        } else {
            document.setPlainText(shown);
        }
        EXPECT_EQ(document.toPlainText(), QString::fromUtf8(text));
    }
}

TEST_F(DeskWindow, TipsOfPropertiesShowNamesAsWritten) {
    drawing::Drawing made;
    made.addTable("JSIMA_V3_Point");
    made.addPoint({1.0, 2.0, 3.0}, 0);
    made.setRow(0, 0, 1, kMarkedUp, "座標", "a.sim");
    window->properties().show(made, PlanObject{PlanObject::Kind::Entity, 0, {}});
    const PropertiesPanel& panel = window->properties();
    bool found = false;
    for (int i = 0; i < panel.topLevelItemCount(); ++i) {
        const QTreeWidgetItem& item = *panel.topLevelItem(i);
        found = found || item.text(1) == QLatin1String(kMarkedUp);
        EXPECT_EQ(item.toolTip(1), asWritten(item.text(1)));
    }
    EXPECT_TRUE(found);
}

TEST_F(DeskWindow, MessagesAndLabelsShowNamesAsWritten) {
    Answers answers;
    answers.then([](QWidget& dialog) {
        auto& box = dynamic_cast<QMessageBox&>(dialog);
        EXPECT_TRUE(box.text().contains(QLatin1String("<b>")));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        box.buttons().front()->click();
    });
    EXPECT_FALSE(window->openFile(QStringLiteral("a<b>c</b>.txt")));
    EXPECT_EQ(window->findChild<QLabel*>(QStringLiteral("station"))->textFormat(), Qt::PlainText);
}

} // namespace
} // namespace fenmark::desk::test
