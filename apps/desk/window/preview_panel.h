// The beginning of a SIMA file that is about to be imported, so that its names show whether they are read aright.
#pragma once

#include "desk/language/texts.h"

#include <QPlainTextEdit>

#include <string>
#include <string_view>

namespace fenmark::desk {

class PreviewPanel : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit PreviewPanel(const Texts& texts, QWidget* parent = nullptr);

    // The first names of points, lots and routes, read under the setting: "auto" or the name of an encoding. Of a file that
    // has none, why.
    void showFile(const std::string& path, std::string_view encoding);

  private:
    const Texts& texts_;
};

} // namespace fenmark::desk
