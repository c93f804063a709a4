// The import dialog: names the file, shows what it holds, and asks what is to be imported into which site and layers.
#pragma once

#include "command/dialogs.h"
#include "ui/dialogs/fenmark_settings_form.h"
#include "ui/dialogs/form.h"
#include "ui/dialogs/log_opener.h"
#include "ui/treelist/tree_list_ctrl.h"

#include <QLineEdit>

#include <array>
#include <exception>
#include <functional>
#include <optional>
#include <string>

namespace fenmark::ui {

// The questions that the form passes on to other windows; programs use the real ones, tests answer by themselves.
struct FenmarkFormServices {
    // The path that the user chose, nothing if cancelled.
    std::function<std::optional<QString>(QWidget* parent, const QString& current)> browse;
    MessageBox warn = showWarning;
    MessageBox plain = showPlain;
    LogOpener openLog = openWithDesktop;
    sima::ProgressFactory* progress = nullptr;
    std::function<sima::Encoding(const std::string& path)> encodingOf = nullptr; // null: code page 932
};

class FenmarkForm : public Form, public treelist::TreeListParent {
    Q_OBJECT

  public:
    FenmarkForm(QWidget* parent, command::ImportDialogState state, FenmarkFormServices services);

    // The state as it stands; complete once the form was accepted.
    const command::ImportDialogState& state() const { return state_; }
    // What the form held when it closed, moved out without a copy.
    command::ImportDialogState takeState() { return std::move(state_); }

    // An exception of the preview after a choice of file, which ended the form; null if there was none. It may not
    // pass through the event loop, so that the caller raises it again.
    std::exception_ptr failure() const { return failure_; }

    int treeListNotify(const treelist::TreeListNotification& notification) override;

  public slots:
    void accept() override;
    void browse();
    void showSettings();
    void showLog();

  private:
    void buildTree();
    bool scan();
    void refreshRows();
    void refreshImportButton();
    void takeTicks();
    void refuseFile();

    command::ImportDialogState state_;
    FenmarkFormServices services_;
    QLineEdit* path_ = nullptr;
    QComboBox* sites_ = nullptr;
    treelist::CTreeListCtrl* tree_ = nullptr;
    QPushButton* log_ = nullptr;
    QPushButton* import_ = nullptr;
    std::exception_ptr failure_;
    treelist::CTreeListItem* root_ = nullptr;
    std::array<treelist::CTreeListItem*, sima::kImportKinds> rows_{};
};

} // namespace fenmark::ui
