// Print and PDF.
#include "desk/paper/paper_dialog.h"

#include "desk/paper/ask_target.h"
#include "desk/paper/page_painter.h"
#include "desk/plan/plan_text.h"
#include "exchange/output_file.h"
#include "exchange/plan/page_fonts.h"
#include "exchange/survey_text.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <optional>
#include <sstream>
#include <utility>

namespace fenmark::desk {

namespace {

constexpr std::array kKindNames{WorkText::PaperPlan,   WorkText::PaperAlong,     WorkText::PaperProfile,
                                WorkText::PaperCross,  WorkText::PaperLots,      WorkText::PaperStakes,
                                WorkText::PaperPoints, WorkText::PaperAlignments};
static_assert(kKindNames.size() == kPaperKinds);
constexpr std::array kTitleNames{WorkText::TextHeading, WorkText::TextProject, WorkText::TextDate,
                                 WorkText::TextAuthor,  WorkText::TextCompany, WorkText::TextRemark};
static_assert(kTitleNames.size() == kTitleTexts.size());
constexpr std::array kPapers{"A4", "A3", "A2", "A1", "A0"};
constexpr std::array kScales{50, 100, 200, 250, 500, 1000, 2500, 5000, 10000};
constexpr int kPrinterDots = 300; // for each inch
constexpr double kInch = 25.4;    // millimetres
constexpr int kFormWidth = 330;   // pixels

bool realPrinter(QPrinter& printer, QWidget* parent) {
    QPrintDialog dialog(&printer, parent);
    return dialog.exec() == QDialog::Accepted;
}

// Acts when a widget has got another size, also at its first showing.
class OnResize : public QObject {
  public:
    OnResize(QObject* parent, std::function<void()> act) : QObject(parent), act_(std::move(act)) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool taken = QObject::eventFilter(watched, event);
        if (event->type() == QEvent::Resize) {
            QTimer::singleShot(0, this, act_); // once the widget itself has heard of it
        }
        return taken;
    }

  private:
    std::function<void()> act_;
};

} // namespace

PaperDialog::PaperDialog(const drawing::Drawing& drawing, drawing::DrawingTexts& keptTexts, const PaperStart& start,
                         const Texts& texts, QWidget* parent)
    : QDialog(parent), askPrinter(realPrinter), drawing_(drawing), kept_(keptTexts), start_(start), texts_(texts) {
    askPath = [](QWidget* asking, const QString& title, const QString& proposal, const QString& filter) {
        return QFileDialog::getSaveFileName(asking, title, proposal, filter);
    };
    setObjectName(QStringLiteral("paper"));
    setWindowTitle(text(WorkText::PaperTitle));
    setSizeGripEnabled(true);
    auto* columns = new QHBoxLayout(this);
    auto* settings = new QWidget(this);
    auto* left = new QVBoxLayout(settings);
    left->setContentsMargins(0, 0, 0, 0);
    form_ = new QFormLayout;
    left->addLayout(form_);
    left->addStretch(1);
    auto* scrolled = new QScrollArea(this);
    scrolled->setWidgetResizable(true);
    scrolled->setFrameShape(QFrame::NoFrame);
    scrolled->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrolled->setWidget(settings);
    scrolled->setFixedWidth(kFormWidth);
    columns->addWidget(scrolled);
    auto* pane = new QWidget(this);
    columns->addWidget(pane, 1);
    makeForm(*form_, start);
    makePreview(*pane);
    resize(QSize(980, 660));
    refresh();
}

// Where the program is ended, the dialog goes as it stands, and its lines still lose the focus on the way.
PaperDialog::~PaperDialog() {
    for (QLineEdit* line : findChildren<QLineEdit*>()) {
        line->disconnect(this);
    }
}

void PaperDialog::makeForm(QFormLayout& form, const PaperStart& start) {
    const auto combo = [&](WorkText name, const char* objectName) {
        auto* box = new QComboBox(this);
        box->setObjectName(QLatin1String(objectName));
        box->setAccessibleName(text(name));
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(10);
        form.addRow(text(name), box);
        return box;
    };
    const auto edit = [&](WorkText name, const char* objectName, const QString& value) {
        auto* line = new QLineEdit(value, this);
        line->setObjectName(QLatin1String(objectName));
        line->setAccessibleName(text(name));
        form.addRow(text(name), line);
        connect(line, &QLineEdit::editingFinished, this, [this] { refresh(); });
        return line;
    };
    kind_ = combo(WorkText::PaperKind, "kind");
    for (const WorkText name : kKindNames) {
        kind_->addItem(text(name));
    }
    kind_->setCurrentIndex(static_cast<int>(start.kind));
    alignment_ = combo(WorkText::PaperOf, "alignment");
    for (std::size_t i = 0; i < drawing_.alignmentCount(); ++i) {
        alignment_->addItem(shownName(exchange::trimmedName(drawing_.alignment(i).name)));
    }
    alignment_->setCurrentIndex(start.alignment < drawing_.alignmentCount() ? static_cast<int>(start.alignment) : 0);
    paper_ = combo(WorkText::PaperSize, "size");
    for (const char* name : kPapers) {
        paper_->addItem(QLatin1String(name));
    }
    paper_->setCurrentIndex(1);
    orientation_ = combo(WorkText::PaperOrientation, "orientation");
    for (const WorkText name : {WorkText::OrientationAuto, WorkText::OrientationWide, WorkText::OrientationUpright}) {
        orientation_->addItem(text(name));
    }
    scale_ = combo(WorkText::PaperScale, "scale");
    scale_->setEditable(true);
    scale_->addItem(text(WorkText::ScaleAuto));
    for (const int scale : kScales) {
        scale_->addItem(QStringLiteral("1:%1").arg(scale));
    }
    extent_ = combo(WorkText::PaperExtent, "extent");
    extent_->addItem(text(WorkText::ExtentAll));
    extent_->addItem(text(WorkText::ExtentView));
    if (start.selection) {
        extent_->addItem(text(WorkText::ExtentSelection));
    }
    pitch_ = edit(WorkText::StakePitch, "pitch", QStringLiteral("20"));
    offsets_ = edit(WorkText::StakeOffsets, "offsets", QStringLiteral("0"));
    auto* heading = new QLabel(text(WorkText::PaperTexts), this);
    QFont bold = font();
    bold.setBold(true);
    heading->setFont(bold);
    form.addRow(heading);
    for (std::size_t i = 0; i < kTitleTexts.size(); ++i) {
        const auto kept = kept_.find(kTitleTexts[i].key);
        titles_.push_back(edit(kTitleNames[i], kTitleTexts[i].key,
                               kept == kept_.end() ? QString() : QString::fromStdString(kept->second)));
    }
    for (QComboBox* box : {kind_, alignment_, paper_, orientation_, scale_, extent_}) {
        connect(box, &QComboBox::activated, this, [this] { refresh(); });
    }
    connect(kind_, &QComboBox::activated, this, [this] {
        // Documents are on A4 by custom, drawings on A3.
        paper_->setCurrentIndex(hasScale(kind()) ? 1 : 0);
        refresh();
    });
    connect(scale_->lineEdit(), &QLineEdit::editingFinished, this, [this] { refresh(); });
    if (!hasScale(start.kind)) {
        paper_->setCurrentIndex(0);
    }
}

void PaperDialog::makePreview(QWidget& pane) {
    auto* layout = new QVBoxLayout(&pane);
    layout->setContentsMargins(0, 0, 0, 0);
    previewArea_ = new QScrollArea(this);
    previewArea_->setAlignment(Qt::AlignCenter);
    previewArea_->setBackgroundRole(QPalette::Dark);
    preview_ = new QLabel(this);
    preview_->setObjectName(QStringLiteral("preview"));
    preview_->setTextFormat(Qt::PlainText);
    previewArea_->setWidget(preview_);
    previewArea_->installEventFilter(new OnResize(this, [this] { drawPreview(); }));
    layout->addWidget(previewArea_, 1);
    message_ = new QLabel(this);
    message_->setTextFormat(Qt::PlainText);
    message_->setWordWrap(true);
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(message_);
    auto* buttons = new QHBoxLayout;
    previous_ = new QPushButton(QStringLiteral("◀"), this);
    next_ = new QPushButton(QStringLiteral("▶"), this);
    previous_->setAccessibleName(text(WorkText::PagePrevious));
    previous_->setToolTip(text(WorkText::PagePrevious));
    next_->setAccessibleName(text(WorkText::PageNext));
    next_->setToolTip(text(WorkText::PageNext));
    pageName_ = new QLabel(this);
    pdf_ = new QPushButton(text(WorkText::PaperSavePdf), this);
    printButton_ = new QPushButton(text(WorkText::PaperPrint), this);
    auto* close = new QPushButton(text(WorkText::PaperClose), this);
    pdf_->setObjectName(QStringLiteral("pdf"));
    printButton_->setObjectName(QStringLiteral("print"));
    close->setObjectName(QStringLiteral("close"));
    for (QPushButton* button : {previous_, next_, pdf_, printButton_, close}) {
        button->setAutoDefault(false); // Enter in a line takes its text, and nothing more
    }
    buttons->addWidget(previous_);
    buttons->addWidget(pageName_);
    buttons->addWidget(next_);
    buttons->addStretch(1);
    buttons->addWidget(pdf_);
    buttons->addWidget(printButton_);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    connect(previous_, &QPushButton::clicked, this, [this] { showPage(page_ - 1); });
    connect(next_, &QPushButton::clicked, this, [this] { showPage(page_ + 1); });
    connect(pdf_, &QPushButton::clicked, this, [this] { savePdf(); });
    connect(printButton_, &QPushButton::clicked, this, [this] { print(); });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

PaperJob PaperDialog::job() const {
    PaperJob job;
    job.kind = kind();
    job.alignment = static_cast<std::size_t>(std::max(0, alignment_->currentIndex()));
    job.options.paper = paper_->currentText().toStdString();
    if (orientation_->currentIndex() > 0) {
        job.options.upright = orientation_->currentIndex() == 2;
    }
    if (hasScale(job.kind)) {
        job.options.scale = scaleOf(scale_->currentText().toStdString());
    }
    if (job.kind == PaperKind::Plan && extent_->currentIndex() > 0) {
        job.options.extent = extent_->currentIndex() == 1 ? start_.view : *start_.selection;
    }
    job.texts = kept_;
    job.stakePitch = std::max(0.0, pitch_->text().toDouble());
    job.stakeOffsets = offsetsOf(offsets_->text().toStdString()).value_or(std::vector<double>{0.0});
    return job;
}

// Pages of other numbers than the fields show would be taken for those that were asked for.
QString PaperDialog::wrongField() const {
    const auto wrong = [this](WorkText name, const QString& typed) {
        return text(WorkText::PaperNoNumber).arg(withoutMnemonic(text(name)), typed);
    };
    const QString scale = scale_->currentText().trimmed();
    if (hasScale(kind()) && !scale.isEmpty() && scale != text(WorkText::ScaleAuto) && !scaleOf(scale.toStdString())) {
        return wrong(WorkText::PaperScale, scale);
    }
    if (kind() != PaperKind::Stakes) {
        return {};
    }
    bool number = true;
    const QString pitch = pitch_->text().trimmed();
    const double every = pitch.isEmpty() ? 0.0 : pitch.toDouble(&number);
    if (!number || !std::isfinite(every) || every < 0.0) {
        return wrong(WorkText::StakePitch, pitch);
    }
    const QString offsets = offsets_->text().trimmed();
    return offsets.isEmpty() || offsetsOf(offsets.toStdString()) ? QString() : wrong(WorkText::StakeOffsets, offsets);
}

// Keeps the title block, makes the pages, and shows the first.
void PaperDialog::refresh() {
    for (std::size_t i = 0; i < titles_.size(); ++i) {
        const std::string value = titles_[i]->text().trimmed().toStdString();
        if (value.empty()) {
            kept_.erase(kTitleTexts[i].key);
        } else {
            kept_[kTitleTexts[i].key] = value;
        }
    }
    form_->setRowVisible(alignment_, needsAlignment(kind()));
    form_->setRowVisible(scale_, hasScale(kind()));
    form_->setRowVisible(extent_, kind() == PaperKind::Plan);
    form_->setRowVisible(pitch_, kind() == PaperKind::Stakes);
    form_->setRowVisible(offsets_, kind() == PaperKind::Stakes);
    QApplication::setOverrideCursor(Qt::WaitCursor);
    brokenOff_ = wrongField();
    try {
        plot_ = brokenOff_.isEmpty() ? pagesOf(drawing_, job()) : exchange::Plot{};
        const exchange::Notes fonts = exchange::notesOfFonts(plot_.pages);
        plot_.notes.insert(plot_.notes.end(), fonts.begin(), fonts.end());
    } catch (const std::exception& error) {
        plot_ = exchange::Plot{};
        brokenOff_ = QString::fromStdString(error.what());
    }
    QApplication::restoreOverrideCursor();
    showPage(std::min(page_, static_cast<int>(plot_.pages.size()) - 1));
}

// A button that is pressed by its key leaves the focus in the line that is being written.
bool PaperDialog::takeTyped() {
    if (qobject_cast<QLineEdit*>(focusWidget()) != nullptr) {
        refresh();
    }
    return !plot_.pages.empty();
}

void PaperDialog::showPage(int page) {
    const int count = static_cast<int>(plot_.pages.size());
    page_ = std::clamp(page, 0, std::max(0, count - 1));
    pageName_->setText(text(WorkText::PageOf).arg(count == 0 ? 0 : page_ + 1).arg(count));
    previous_->setEnabled(page_ > 0);
    next_->setEnabled(page_ + 1 < count);
    pdf_->setEnabled(count > 0);
    printButton_->setEnabled(count > 0);
    QStringList lines;
    if (!brokenOff_.isEmpty()) {
        lines << brokenOff_;
    }
    if (plot_.failure) {
        lines << QString::fromStdString(exchange::wording(*plot_.failure, texts_.language()));
    }
    for (const exchange::Note& note : plot_.notes) {
        lines << QString::fromStdString(exchange::wording(note, texts_.language()));
    }
    message_->setText(lines.join(QLatin1Char('\n')));
    message_->setVisible(!lines.isEmpty());
    drawPreview();
}

void PaperDialog::drawPreview() {
    if (plot_.pages.empty()) {
        preview_->clear();
        preview_->resize(0, 0);
        return;
    }
    const std::string& svg = plot_.pages[static_cast<std::size_t>(page_)];
    const QSizeF paper = pageSize(svg);
    const QSizeF room = previewArea_->maximumViewportSize() - QSize(8, 8);
    const double scale = std::max(0.2, std::min(room.width() / paper.width(), room.height() / paper.height()));
    Outcome drawn;
    QImage image = pageImage(svg, scale * devicePixelRatioF(), drawn);
    if (!drawn) {
        preview_->setText(QString::fromStdString(drawn.in(texts_.language())));
        preview_->adjustSize();
        return;
    }
    image.setDevicePixelRatio(devicePixelRatioF());
    preview_->setPixmap(QPixmap::fromImage(image));
    preview_->resize((paper * scale).toSize());
    preview_->setAccessibleName(kind_->currentText() + QLatin1Char(' ') + pageName_->text());
}

bool PaperDialog::savePdf() {
    if (!takeTyped()) {
        return false;
    }
    const QString file = askTarget(
        [this](const QString& proposal) {
            return askPath(this, withoutMnemonic(text(WorkText::PaperSavePdf)), proposal,
                           QStringLiteral("PDF (*.pdf)"));
        },
        proposal_ + QStringLiteral(".pdf"), [](const QString& path) { return withExtension(path, ".pdf"); });
    if (file.isEmpty()) {
        return false;
    }
    return savePdfAs(file);
}

bool PaperDialog::savePdfAs(const QString& file) {
    if (const std::optional<Text> refused = targetRefusal(drawing_, file)) {
        message_->setVisible(true);
        message_->setText(texts_(*refused).arg(QDir::toNativeSeparators(file)));
        lastSaved_.clear();
        return false;
    }
    std::ostringstream pdf; // whole before the file is touched
    Outcome saved = exchange::writePdf(plot_, pdf);
    if (saved) {
        saved = exchange::writeFile(file.toStdString(), [&](std::ostream& out) { out << pdf.view(); });
    }
    message_->setVisible(true);
    message_->setText(saved ? text(WorkText::PaperSaved).arg(QDir::toNativeSeparators(file))
                            : QString::fromStdString(saved.in(texts_.language())));
    lastSaved_ = saved ? file : QString();
    return static_cast<bool>(saved);
}

bool PaperDialog::print() {
    if (!takeTyped()) {
        return false;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setResolution(kPrinterDots);
    const QSizeF paper = pageSize(plot_.pages.front());
    const bool wide = paper.width() > paper.height();
    printer.setPageSize(QPageSize(wide ? paper.transposed() : paper, QPageSize::Millimeter));
    printer.setPageOrientation(wide ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setDocName(proposal_);
    if (!askPrinter(printer, this)) {
        return false;
    }
    if (!printer.outputFileName().isEmpty()) {
        return savePdfAs(printer.outputFileName()); // the toolkit would write over any file, and tells no full disk
    }
    const Outcome printed = printPages(plot_, printer);
    message_->setVisible(!printed);
    message_->setText(QString::fromStdString(printed.in(texts_.language())));
    return static_cast<bool>(printed);
}

Outcome printPages(const exchange::Plot& plot, QPrinter& printer) {
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer)) {
        return failed({"the printer does not answer", "プリンタが応答しません"});
    }
    const double dots = printer.resolution() / kInch;
    for (std::size_t i = 0; i < plot.pages.size(); ++i) {
        if (i > 0 && !printer.newPage()) {
            return failed({"the printer takes no further page", "プリンタが次のページを受け付けません"});
        }
        const QSizeF wanted = pageSize(plot.pages[i]) * dots;
        const QSizeF has = printer.pageLayout().fullRectPixels(printer.resolution()).size();
        // A sheet that is larger than the paper by more than rounding is made smaller.
        const bool fits = wanted.width() <= has.width() + dots && wanted.height() <= has.height() + dots;
        if (Outcome painted = paintPage(plot.pages[i], painter, QRectF(QPointF(0, 0), fits ? wanted : has)); !painted) {
            return painted;
        }
    }
    return painter.end() ? Outcome() : failed({"the printer did not finish", "プリンタが印刷を終了しませんでした"});
}

} // namespace fenmark::desk
