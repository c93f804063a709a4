// Files, messages and answers for the tests of the dialogs.
#pragma once

#include "command/dialog_rules.h"
#include "command/dialogs.h"
#include "ui/dialogs/fenmark_form.h"

#include <QTemporaryDir>
#include <QWidget>

#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace fenmark::ui::test {

// A folder of its own with SIMA files in it.
class Files {
  public:
    std::string write(const std::string& name, const std::string& content) const {
        const std::string path = folder_.filePath(QString::fromStdString(name)).toStdString();
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    static std::string read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    QTemporaryDir folder_;
};

struct Message {
    QString caption;
    QString text;
};

// A form's services that note what is asked and answer by themselves.
struct Answers {
    std::vector<Message> warnings;
    std::vector<Message> plain;
    std::vector<QString> opened;
    std::optional<QString> chosen;

    FenmarkFormServices services() {
        FenmarkFormServices services;
        services.browse = [this](QWidget*, const QString&) { return chosen; };
        services.warn = [this](QWidget*, const QString& caption, const QString& text) {
            warnings.push_back({caption, text});
        };
        services.plain = [this](QWidget*, const QString& caption, const QString& text) {
            plain.push_back({caption, text});
        };
        services.openLog = [this](const QString& path) { opened.push_back(path); };
        return services;
    }
};

template <typename Widget>
Widget* control(QWidget& parent, int id) {
    return parent.findChild<Widget*>(QStringLiteral("id%1").arg(id));
}

inline const std::string kPointsOnly = "A00,\r\nA01,1,P1,100.0,200.0,,\r\nA01,2,P2,110.0,200.0,,\r\nA99,\r\n";

} // namespace fenmark::ui::test
