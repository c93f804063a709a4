// The layers of five kinds of output, and the shift distance of walls in longitudinal and cross-section results.
#pragma once

#include "ui/dialogs/form.h"
#include "ui/dialogs/message_boxes.h"

#include <QLineEdit>

#include <array>
#include <string>
#include <vector>

namespace fenmark::ui {

struct ImportSettings {
    std::string pointLayer = {};
    std::string ipLayer = {};
    std::string lotLayer = {};
    std::string wideStakeLayer = {};
    std::string continuousLayer = {};
    double shiftDistance = 0.0001; // metres
};

class FenmarkSettingsForm : public Form {
    Q_OBJECT

  public:
    FenmarkSettingsForm(QWidget* parent, const std::vector<std::string>& layerNames, const ImportSettings& settings,
                        MessageBox message = showPlain);

    const ImportSettings& settings() const { return settings_; }

  public slots:
    // The layers are taken first, also when the shift distance is then refused and the dialog stays open.
    void accept() override;

  private:
    ImportSettings settings_;
    MessageBox message_;
    std::array<QComboBox*, 5> lists_{}; // points, IP line, lots, width stakes, continuous lines
    QLineEdit* shift_ = nullptr;
};

// "%0.12f" with all trailing zeros cut; the point itself is never cut ("5.").
std::string formatShiftDistance(double metres);

} // namespace fenmark::ui
