// Rows of two columns whose second one wraps.
#pragma once

#include <QTreeWidget>

namespace fenmark::desk {

// Makes the rows as high as their second texts need, which are seen whole also in a narrow place.
void fitRows(QTreeWidget& tree);

} // namespace fenmark::desk
