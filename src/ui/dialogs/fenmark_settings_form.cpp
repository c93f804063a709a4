// The layers of five kinds of output, and the shift distance of walls in longitudinal and cross-section results.
#include "ui/dialogs/fenmark_settings_form.h"

#include "command/dialog_rules.h"
#include "sima/text/number.h"

#include <QGroupBox>

#include <utility>

namespace fenmark::ui {

namespace {

struct Row {
    int id;
    const char* label;
    int y; // dialog units
    std::string ImportSettings::*layer;
};

constexpr std::array<Row, 5> kRows{{
    {205, "ポイント：", 24, &ImportSettings::pointLayer},
    {200, "ＩＰ線：　", 42, &ImportSettings::ipLayer},
    {201, "画地：", 60, &ImportSettings::lotLayer},
    {202, "幅杭線：", 79, &ImportSettings::wideStakeLayer},
    {203, "曲線を含まない連続線：", 97, &ImportSettings::continuousLayer},
}};

} // namespace

std::string formatShiftDistance(double metres) {
    std::string text = sima::formatReal(metres);
    while (!text.empty() && text.back() == '0') {
        text.pop_back();
    }
    return text;
}

FenmarkSettingsForm::FenmarkSettingsForm(QWidget* parent, const std::vector<std::string>& layerNames,
                                         const ImportSettings& settings, MessageBox message)
    : Form(parent, QStringLiteral("SIMAファイル読み込み設定"), 292, 193), settings_(settings),
      message_(std::move(message)) {
    auto* layers = new QGroupBox(QStringLiteral("ポリラインの画層"), this);
    place(layers, units(), 6, 6, 282, 126);
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        const Row& row = kRows[i];
        QLabel* label = addLabel(QString::fromUtf8(row.label), 12, row.y + 2, 128, 8);
        lists_[i] = addSortedList(144, row.y, 138, row.id);
        label->setBuddy(lists_[i]);
        lists_[i]->setAccessibleName(label->text());
        fillSorted(lists_[i], layerNames);
        selectExact(lists_[i], settings_.*row.layer);
    }
    auto* shiftGroup = new QGroupBox(QStringLiteral("縦断・横断成果の垂直壁のシフト距離　"), this);
    place(shiftGroup, units(), 6, 138, 282, 30);
    QLabel* shiftLabel = addLabel(QStringLiteral("シフト距離：　"), 12, 153, 128, 8);
    shift_ = new QLineEdit(this);
    place(shift_, units(), 144, 151, 120, 12);
    setControlId(shift_, 204);
    shift_->setText(QString::fromStdString(formatShiftDistance(settings_.shiftDistance)));
    shiftLabel->setBuddy(shift_);
    addLabel(QStringLiteral("m"), 268, 153, 12, 8);

    QPushButton* set = addButton(QStringLiteral("設定"), 180, 174, 50, 14, 1);
    QPushButton* cancel = addButton(QStringLiteral("取り消し"), 234, 174, 50, 14, 2);
    set->setDefault(true);
    connect(set, &QPushButton::clicked, this, &FenmarkSettingsForm::accept);
    connect(cancel, &QPushButton::clicked, this, &FenmarkSettingsForm::reject);
}

void FenmarkSettingsForm::accept() {
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        settings_.*kRows[i].layer = lists_[i]->currentText().toStdString();
    }
    double metres = 0.0;
    const bool accepted = command::parseShiftDistance(shift_->text().toStdString(), metres);
    if (!accepted) {
        message_(this, QString(), QStringLiteral("0より大きい値を指定してください。"));
        shift_->setFocus();
        shift_->selectAll();
        return;
    }
    settings_.shiftDistance = metres;
    Form::accept();
}

} // namespace fenmark::ui
