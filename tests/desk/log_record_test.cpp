// From a line of the log to the record of the file, and to the object that was made of it.
#include "desk_test_support.h"

#include "desk/plan/record_object.h"

#include <QTextBlock>

#include <fstream>

namespace fenmark::desk::test {
namespace {

TEST(LogLine, TellsTheNumberOfItsRecord) {
    EXPECT_EQ(recordNumberIn("00012行目 A01,1,"), 12);
    EXPECT_EQ(recordNumberIn("00005 A00 座標データの読み込み開始"), 5);
    EXPECT_EQ(recordNumberIn("1234567 D00 画地データの読み込み開始"), 1234567);
    for (const char* line : {"", "62個のエラー", "ERROR ---", "0012 A00", "00012", "          3点の構成点"}) {
        EXPECT_FALSE(recordNumberIn(line)) << line;
    }
}

TEST(LogPath, LeadsToTheFileInLettersOfAnyCase) {
    const Folder folder;
    const std::string log = folder.write(QStringLiteral("a.b_Input.log"), "").toStdString();
    EXPECT_EQ(sourceOfLog(log), "");
    const std::string source = folder.write(QStringLiteral("a.b.SIM"), "").toStdString();
    EXPECT_EQ(sourceOfLog(log), source);
    EXPECT_EQ(sourceOfLog(source), "");
    EXPECT_EQ(sourceOfLog(""), "");
}

TEST(SourceLines, TellTheLineAndWhatItStandsIn) {
    const Folder folder;
    const std::string path =
        folder.write(QStringLiteral("a.sim"), "A00,\r\nA01,1\nA99,\r\nI00,3\r\nI01,No.5\r\nI02,\x8D\xB6\r\nI99\r\nZ00")
            .toStdString();
    const auto point = readSource(path, 2, 1);
    ASSERT_TRUE(point);
    EXPECT_EQ(point->record.text, "A01,1");
    EXPECT_EQ(point->record.section, "A00,");
    EXPECT_EQ(point->first, 1);
    EXPECT_EQ(point->lines, (std::vector<std::string>{"A00,", "A01,1", "A99,"}));
    const auto result = readSource(path, 6, 0);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->record.text, "I02,左");
    EXPECT_EQ(result->record.section, "I00,3");
    EXPECT_EQ(result->record.crossSection, "I01,No.5");
    EXPECT_EQ(readSource(path, 8, 3)->record.section, "");
    EXPECT_FALSE(readSource(path, 9, 3));
    EXPECT_FALSE(readSource(path, 0, 3));
    EXPECT_FALSE(readSource(path + "x", 1, 3));
}

// The road example, imported; "lineOf" finds a record of its file.
struct LogOfTheRoad : DeskWindow {
    std::string source;

    void SetUp() override {
        DeskWindow::SetUp();
        const QString file = folder.example(QStringLiteral("road.sim"));
        source = file.toStdString();
        import(file);
    }
    std::int64_t lineOf(const std::string& beginning) const {
        for (std::int64_t number = 1;; ++number) {
            const auto line = readSource(source, number, 0);
            if (!line) {
                ADD_FAILURE() << "no line " << beginning;
                return 0;
            }
            if (line->record.text.starts_with(beginning)) {
                return number;
            }
        }
    }
    std::optional<PlanObject> objectOfLine(std::int64_t number) {
        return objectOfRecord(drawing(), madeSince(window->session().steps().back().before),
                              readSource(source, number, 0)->record);
    }
    std::string nameOf(const std::optional<PlanObject>& object) {
        if (!object) {
            return "(none)";
        }
        return object->kind == PlanObject::Kind::Alignment ? drawing().alignment(object->index).name
                                                           : std::string(drawing().entity(object->index).row->name);
    }
    std::string typeOf(const std::optional<PlanObject>& object) {
        return object && object->kind == PlanObject::Kind::Entity
                   ? std::string(drawing().entity(object->index).row->type)
                   : "";
    }
};

TEST_F(LogOfTheRoad, EveryKindOfRecordLeadsToItsObject) {
    const auto point = objectOfLine(lineOf("A01,2,KA1-1"));
    EXPECT_EQ(nameOf(point), "KA1-1");
    EXPECT_EQ(typeOf(point), "座標");
    const std::int64_t lot = lineOf("D00,2,");
    for (const std::int64_t line : {lot, lot + 1, lot + 5}) {
        EXPECT_EQ(nameOf(objectOfLine(line)), "川端12-2") << line;
        EXPECT_EQ(typeOf(objectOfLine(line)), "画地");
    }
    EXPECT_EQ(nameOf(objectOfLine(lineOf("F00,3,1,中心線"))), "中心線");
    EXPECT_EQ(nameOf(objectOfLine(lineOf("C02,90.000,0,150.000"))), "中心線");
    EXPECT_EQ(typeOf(objectOfLine(lineOf("F00,1,1,ＩＰ"))), "IP線");
    EXPECT_EQ(typeOf(objectOfLine(lineOf("F00,4,1,幅杭左"))), "幅杭線左");
    const auto longitudinal = objectOfLine(lineOf("H01,No.7,"));
    EXPECT_EQ(nameOf(longitudinal), "No.7");
    EXPECT_EQ(typeOf(longitudinal), "縦断成果");
    const std::int64_t section = lineOf("I01,No.7,");
    const auto centre = objectOfLine(section);
    EXPECT_EQ(nameOf(centre), "No.7");
    EXPECT_EQ(typeOf(centre), "横断成果");
    // Its points one after the other, unnamed and named ones.
    const std::size_t first = objectOfLine(section + 1)->index;
    EXPECT_LT(first, centre->index);
    EXPECT_LT(centre->index, first + 10);
    for (const std::int64_t line : {section + 2, section + 6, section + 7}) {
        const auto side = objectOfLine(line);
        ASSERT_TRUE(side) << line;
        EXPECT_GT(side->index, first);
        EXPECT_LT(side->index, first + 10) << "of this cross section, not of the next with that name";
    }
    EXPECT_EQ(nameOf(objectOfLine(section + 2)), "幅杭左");
    // The two ends of a wall.
    for (const std::int64_t line : {section + 3, section + 4}) {
        ASSERT_TRUE(objectOfLine(line));
        const SourceRecord record = readSource(source, line, 0)->record;
        EXPECT_NE(record.text.find(QByteArray::number(drawing().entity(objectOfLine(line)->index).position().z)),
                  std::string::npos)
            << record.text;
    }
    EXPECT_FALSE(objectOfLine(1)) << "a comment";
}

TEST_F(LogOfTheRoad, ObjectsOfAnEarlierImportAreNotTakenForThoseOfThisOne) {
    import(QString::fromStdString(source));
    const auto point = objectOfLine(lineOf("A01,2,KA1-1"));
    ASSERT_TRUE(point);
    EXPECT_GE(point->index, window->session().steps().back().before.entities);
    EXPECT_GE(objectOfLine(lineOf("F00,3,1,中心線"))->index, 3U);
}

TEST_F(LogOfTheRoad, ARecordThatWasRefusedAsADoubleLeadsToNoObject) {
    SourceRecord record = readSource(source, lineOf("A01,2,"), 0)->record;
    record.text = "A01,2,二重,1.000,2.000,,";
    EXPECT_FALSE(objectOfRecord(drawing(), madeSince(window->session().steps().back().before), record));
}

TEST_F(LogOfTheRoad, AClickOnALineShowsTheObjectAndTheLineOfTheFile) {
    LogPanel& log = window->log();
    const QTextBlock block = log.document()->find(QStringLiteral("平面線形”中心線”")).block();
    ASSERT_TRUE(block.isValid());
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, 12);
    log.setTextCursor(cursor);
    log.ensureCursorVisible();
    QTest::mouseClick(log.viewport(), Qt::LeftButton, {}, log.cursorRect(cursor).center());
    ASSERT_TRUE(plan().selected());
    EXPECT_EQ(*plan().selected(), (PlanObject{PlanObject::Kind::Alignment, 0, {}}));
    EXPECT_TRUE(window->source().isVisible());
    EXPECT_TRUE(window->source().textCursor().block().text().endsWith(QStringLiteral("F99,")));
    EXPECT_TRUE(window->source().toPlainText().contains(QStringLiteral("C02,90.000,0,150.000")));
    QApplication::processEvents();
    EXPECT_TRUE(window->source().viewport()->rect().contains(window->source().cursorRect().center()));
}

TEST_F(DeskWindow, EnterOnAnErrorOfTheLogShowsTheRefusedRecord) {
    import(folder.write(QStringLiteral("a.sim"), "A00,\r\nA01,1,P,1.0,2.0,,\r\nA01,2,Q,x,2.0,,\r\nA99,\r\n"));
    LogPanel& log = window->log();
    const QString text = log.toPlainText();
    ASSERT_TRUE(text.contains(QStringLiteral("ErrA01-2")));
    // From each line of the error, by keys alone.
    for (const QString& part : {QStringLiteral("ERROR ---"), QStringLiteral("ErrA01-2"), QStringLiteral("00003行目"),
                                QStringLiteral("------------------------------\n")}) {
        window->source().clear();
        QTextCursor cursor(log.document());
        cursor.setPosition(static_cast<int>(text.lastIndexOf(part)));
        log.setTextCursor(cursor);
        QTest::keyClick(&log, Qt::Key_Return);
        EXPECT_EQ(window->source().textCursor().block().text().trimmed(), QStringLiteral("3  A01,2,Q,x,2.0,,"))
            << part.toStdString();
    }
    EXPECT_FALSE(plan().selected());
    // The line about the whole says nothing of a record.
    window->source().clear();
    log.moveCursor(QTextCursor::End);
    QTest::keyClick(&log, Qt::Key_Return);
    EXPECT_TRUE(window->source().toPlainText().isEmpty());
}

TEST_F(DeskWindow, ALogWhoseFileWentIsToldSo) {
    const QString file = folder.example(QStringLiteral("cadastral.sim"));
    import(file);
    ASSERT_TRUE(QFile::remove(file));
    window->showRecord(10);
    EXPECT_TRUE(said(QStringLiteral("10行目のSIMAファイルが見つかりません")));
    EXPECT_FALSE(window->source().isVisible());
}

} // namespace
} // namespace fenmark::desk::test
