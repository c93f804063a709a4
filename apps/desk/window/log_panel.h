// The log of the last import, read from the file that the import wrote.
#pragma once

#include "desk/language/texts.h"

#include <QPlainTextEdit>
#include <QString>

#include <string>

namespace fenmark::desk {

class LogPanel : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit LogPanel(QWidget* parent = nullptr);

    // Reads the log; an empty path or one that cannot be read shows that there is none.
    void showLog(const std::string& path, const Texts& texts);
    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

} // namespace fenmark::desk
