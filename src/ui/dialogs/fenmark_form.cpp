// The import dialog.
#include "ui/dialogs/fenmark_form.h"

#include "command/dialog_rules.h"
#include "ui/dialogs/sim_file_dialog.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace fenmark::ui {

using treelist::CTreeListItem;

namespace {

// Tree, tree lines, lines at the root, expand buttons, check boxes. The bits 0x20, 0x40 and 0x80 have no effect.
constexpr std::uint32_t kTreeStyle = 0xf00f1;
constexpr int kColumnMargin = 20;   // pixels that the one column leaves free
constexpr int kLeastRowHeight = 16; // pixels

constexpr std::size_t index(sima::ImportKind kind) {
    return static_cast<std::size_t>(kind);
}

} // namespace

FenmarkForm::FenmarkForm(QWidget* parent, command::ImportDialogState state, FenmarkFormServices services)
    : Form(parent, QStringLiteral("SIMAファイル読み込み"), 270, 206), state_(std::move(state)),
      services_(std::move(services)) {
    state_.mustChooseAlignment = false;
    if (!services_.browse) {
        services_.browse = browseForSimFile;
    }

    QLabel* pathLabel = addLabel(QStringLiteral("ファイル名:"), 6, 6, 42, 8);
    path_ = new QLineEdit(this);
    place(path_, units(), 78, 6, 144, 12);
    setControlId(path_, 210);
    path_->setReadOnly(true);
    path_->setAccessibleName(pathLabel->text());
    QPushButton* browseButton = addButton(QStringLiteral("参照"), 228, 6, 36, 12, 206);
    QLabel* siteLabel = addLabel(QStringLiteral("サイト名:"), 6, 24, 60, 8, 220);
    sites_ = addSortedList(78, 24, 186, 207);
    siteLabel->setBuddy(sites_);
    tree_ = new treelist::CTreeListCtrl(this);
    tree_->Create(kTreeStyle, units().rect(6, 42, 258, 138), this);
    setControlId(tree_, 208);
    tree_->SetNotifyTarget(this);
    tree_->setAccessibleName(QStringLiteral("ファイルの内容"));
    tree_->setAccessibleDescription(QStringLiteral("Insertキーでチェックを切り替えます"));
    QPushButton* settings = addButton(QStringLiteral("設定..."), 6, 186, 48, 12, 209);
    // Created invisible and never made visible; only its enabled state is kept up to date.
    log_ = addButton(QStringLiteral("ログの表示..."), 102, 186, 50, 14, 212);
    log_->hide();
    import_ = addButton(QStringLiteral("読み込み"), 156, 186, 50, 14, 1);
    import_->setDefault(true);
    QPushButton* close = addButton(QStringLiteral("閉じる"), 210, 186, 50, 14, 2);
    QWidget* previous = path_;
    for (QWidget* next : std::initializer_list<QWidget*>{browseButton, sites_, tree_, settings, log_, import_, close}) {
        setTabOrder(previous, next);
        previous = next;
    }

    connect(browseButton, &QPushButton::clicked, this, &FenmarkForm::browse);
    connect(settings, &QPushButton::clicked, this, &FenmarkForm::showSettings);
    connect(log_, &QPushButton::clicked, this, &FenmarkForm::showLog);
    connect(import_, &QPushButton::clicked, this, &FenmarkForm::accept);
    connect(close, &QPushButton::clicked, this, &FenmarkForm::reject);

    path_->setText(QString::fromStdString(state_.filePath));
    if (!state_.filePath.empty()) {
        const std::optional<std::int64_t> time = command::modificationTime(state_.filePath);
        if ((!time || *time != state_.fileTime) && !scan()) {
            path_->clear(); // the stored path stays
        }
    }
    fillSorted(sites_, state_.siteNames);
    selectExact(sites_, state_.siteName);
    buildTree();
    refreshRows();
    // Enter imports what is shown, or asks for a file where there is nothing to import.
    (import_->isEnabled() ? static_cast<QWidget*>(path_) : browseButton)->setFocus();
}

// The preview of the stored path replaces the reader and its counters. False if the file cannot be opened: the reader
// is empty then.
bool FenmarkForm::scan() {
    state_.reader = sima::SimaReader();
    const sima::ReadContext context{.sink = nullptr,
                                    .progress = services_.progress,
                                    .host = nullptr,
                                    .encoding = services_.encodingOf ? services_.encodingOf(state_.filePath)
                                                                     : sima::Encoding::Cp932};
    bool opened = false;
    try {
        opened = state_.reader.previewScan(state_.filePath, context) == 0;
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument(command::brokenOffText(state_.reader, error));
    }
    command::countFromPreview(state_.reader, state_.options);
    return opened;
}

void FenmarkForm::buildTree() {
    tree_->InsertColumn(QStringLiteral("Name"), treelist::kColumnInitialFormat,
                        tree_->width() - 2 * tree_->frameWidth() - kColumnMargin);
    tree_->SetColumnModify(0, static_cast<int>(treelist::ModifyKind::Edit));
    root_ = tree_->InsertItem(QString::fromStdString(state_.options.labels[sima::kImportLabels - 1]));
    tree_->SetItemImage(root_, 0, 1, 2, 3);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const std::string& label = state_.options.labels[index(command::kTreeRows[i])];
        rows_[i] = tree_->InsertItem(QString::fromStdString(label), root_);
        // No images are attached, so that these numbers have no effect to be seen.
        const int image = i == 0 ? 4 : i == 1 ? 8 : 0;
        tree_->SetItemImage(rows_[i], image, image + 1, image + 2, image + 3);
        // A leaf that was expanded once shows no button.
        tree_->Expand(rows_[i], treelist::ExpandCode::Toggle);
    }
    tree_->Expand(root_, treelist::ExpandCode::Expand);
    // All rows are seen at once where their texts leave room.
    const int all = static_cast<int>(rows_.size()) + 1;
    const int fits = (tree_->height() - 2 * tree_->frameWidth()) / all;
    if (fits < tree_->GetItemHeight()) {
        tree_->SetItemHeight(std::max({fits, kLeastRowHeight, tree_->fontMetrics().height()}));
    }
}

// Every row that has data is ticked anew: ticks of an earlier import are not remembered.
void FenmarkForm::refreshRows() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const sima::ImportKind kind = command::kTreeRows[i];
        const bool any = state_.options.counts[index(kind)] >= 1;
        tree_->SetItemText(rows_[i], 0, QString::fromStdString(command::treeRowText(state_.options, kind)));
        tree_->SetItemState(rows_[i], any ? treelist::kItemCheckBox : 0U, treelist::kItemCheckBox);
        tree_->SetCheck(rows_[i], any ? 1 : 0);
        tree_->SetLock(rows_[i], any ? 0 : 1);
    }
    refreshImportButton();
    log_->setEnabled(state_.reader.log.errorCount() >= 1);
}

void FenmarkForm::refreshImportButton() {
    import_->setEnabled(command::canImport(state_.options));
}

// A row without data is never ticked, however a cascade marked it; a mixed row counts as ticked.
void FenmarkForm::takeTicks() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const std::size_t kind = index(command::kTreeRows[i]);
        state_.options.flags[kind] = state_.options.counts[kind] >= 1 && tree_->GetCheck(rows_[i]) != 0;
    }
}

int FenmarkForm::treeListNotify(const treelist::TreeListNotification& notification) {
    if (notification.code == treelist::kNotifyCheckChanged) {
        takeTicks();
        refreshImportButton();
    }
    return 0;
}

void FenmarkForm::refuseFile() {
    services_.warn(this, QStringLiteral("Invalid SIM File!"), QStringLiteral("Please browse for Valid SIM File."));
}

void FenmarkForm::browse() {
    const std::optional<QString> chosen = services_.browse(this, QString::fromStdString(state_.filePath));
    if (!chosen) {
        return;
    }
    // The path is stored before any test, so that a rejected file is refused again by the import button.
    state_.filePath = chosen->toStdString();
    if (!command::isSimFile(state_.filePath)) {
        refuseFile();
        return;
    }
    state_.options = sima::SimaImportOptions();
    path_->setText(*chosen);
    try {
        scan();
    } catch (...) {
        failure_ = std::current_exception();
        reject();
        return;
    }
    refreshRows();
    if (import_->isEnabled()) {
        import_->setFocus(); // Enter imports
    }
}

void FenmarkForm::showSettings() {
    FenmarkSettingsForm form(this, state_.layerNames,
                             {.pointLayer = state_.pointLayer,
                              .ipLayer = state_.ipLayer,
                              .lotLayer = state_.lotLayer,
                              .wideStakeLayer = state_.wideStakeLayer,
                              .continuousLayer = state_.continuousLayer,
                              .shiftDistance = state_.shiftDistance},
                             services_.plain);
    if (form.exec() != QDialog::Accepted) {
        return;
    }
    const ImportSettings& settings = form.settings();
    state_.pointLayer = settings.pointLayer;
    state_.ipLayer = settings.ipLayer;
    state_.lotLayer = settings.lotLayer;
    state_.wideStakeLayer = settings.wideStakeLayer;
    state_.continuousLayer = settings.continuousLayer;
    state_.shiftDistance = settings.shiftDistance;
}

void FenmarkForm::showLog() {
    sima::SimaLog log = state_.reader.log;
    log.setFileName(state_.filePath);
    try {
        log.writeErrorsOnly();
    } catch (const std::system_error& error) {
        services_.warn(this, windowTitle(), QString::fromLocal8Bit(error.what()));
        return;
    }
    services_.openLog(QString::fromStdString(log.fileName()));
}

void FenmarkForm::accept() {
    if (!command::isSimFile(state_.filePath)) {
        refuseFile();
        return;
    }
    takeTicks();
    state_.siteName = sites_->currentText().toStdString();
    if (const std::optional<std::int64_t> time = command::modificationTime(state_.filePath)) {
        state_.fileTime = *time;
    }
    state_.mustChooseAlignment =
        command::mustChooseAlignment(state_.reader, state_.options, state_.mustChooseAlignment);
    Form::accept();
}

} // namespace fenmark::ui
