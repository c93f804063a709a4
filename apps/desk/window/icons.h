// The pictures of the tool bar, drawn in lines so that they fit every screen and theme.
#pragma once

#include <QColor>
#include <QIcon>

namespace fenmark::desk {

enum class Picture { New, Open, Save, Import, Undo, Redo, Find, Fit, ZoomIn, ZoomOut, ZoomWindow, Program };

QIcon icon(Picture picture, const QColor& ink);

} // namespace fenmark::desk
