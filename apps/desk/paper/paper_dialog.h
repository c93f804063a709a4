// Print and PDF: what goes on paper, how large, and a preview of every page.
#pragma once

#include "desk/language/work_texts.h"
#include "desk/paper/paper_job.h"
#include "desk/plan/plan_object.h"

#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QScrollArea>

#include <functional>
#include <optional>
#include <vector>

namespace fenmark::desk {

// What the dialog is opened for.
struct PaperStart {
    PaperKind kind = PaperKind::Plan;
    std::size_t alignment = 0;
    drawing::Extent view;                     // what the plan shows
    std::optional<drawing::Extent> selection; // of the selected object
};

class PaperDialog : public QDialog {
    Q_OBJECT

  public:
    PaperDialog(const drawing::Drawing& drawing, drawing::DrawingTexts& keptTexts, const PaperStart& start,
                const Texts& texts, QWidget* parent);
    ~PaperDialog() override;

    // The path of the file to write; empty if cancelled. Tests answer by themselves.
    std::function<QString(QWidget* parent, const QString& title, const QString& proposal, const QString& filter)>
        askPath;
    // Lets the user choose a printer; false if cancelled.
    std::function<bool(QPrinter& printer, QWidget* parent)> askPrinter;
    // The name that is proposed for the file, without folder and extension.
    void setProposal(const QString& path) { proposal_ = path; }

    [[nodiscard]] const exchange::Plot& plot() const { return plot_; }
    [[nodiscard]] int page() const { return page_; }
    void showPage(int page);
    [[nodiscard]] QString message() const { return message_->text(); }
    bool savePdf();
    bool print();
    [[nodiscard]] const QString& lastSaved() const { return lastSaved_; }

  private:
    void makeForm(QFormLayout& form, const PaperStart& start);
    void makePreview(QWidget& pane);
    void refresh();
    bool takeTyped(); // false if there are no pages then
    void showState();
    void drawPreview();
    bool savePdfAs(const QString& file);
    [[nodiscard]] PaperJob job() const;
    [[nodiscard]] QString wrongField() const; // what is no number where one is wanted; empty if nothing
    [[nodiscard]] PaperKind kind() const { return static_cast<PaperKind>(kind_->currentIndex()); }
    [[nodiscard]] QString text(WorkText which) const { return workText(texts_, which); }

    const drawing::Drawing& drawing_;
    drawing::DrawingTexts& kept_;
    PaperStart start_;
    const Texts& texts_;
    exchange::Plot plot_;
    QString brokenOff_; // why the pages could not be made; empty otherwise
    int page_ = 0;
    QString proposal_;
    QString lastSaved_;

    QFormLayout* form_ = nullptr;
    QComboBox* kind_ = nullptr;
    QComboBox* alignment_ = nullptr;
    QComboBox* paper_ = nullptr;
    QComboBox* orientation_ = nullptr;
    QComboBox* scale_ = nullptr;
    QComboBox* extent_ = nullptr;
    QLineEdit* pitch_ = nullptr;
    QLineEdit* offsets_ = nullptr;
    std::vector<QLineEdit*> titles_;
    QLabel* preview_ = nullptr;
    QScrollArea* previewArea_ = nullptr;
    QLabel* message_ = nullptr;
    QLabel* pageName_ = nullptr;
    QPushButton* previous_ = nullptr;
    QPushButton* next_ = nullptr;
    QPushButton* pdf_ = nullptr;
    QPushButton* printButton_ = nullptr;
};

// All pages on the printer, one sheet each, at their own size where the printer's paper is as large, otherwise as large as
// it takes.
Outcome printPages(const exchange::Plot& plot, QPrinter& printer);

} // namespace fenmark::desk
