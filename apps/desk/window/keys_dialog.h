// The help of F1: every key of the window, and what it does.
#pragma once

#include <QString>

#include <vector>

namespace fenmark::desk {

class MainWindow;

struct KeyHelp {
    QString keys; // "Ctrl+Y / Ctrl+Shift+Z"; empty for a heading
    QString what;
};

// The keys and movements of the mouse in the plan and the panels, then those of the menus, as these have them now.
std::vector<KeyHelp> keysOf(const MainWindow& window);

// A window with that list, which fits small screens and can be copied from; returns when it is closed.
void showKeys(MainWindow& window);

} // namespace fenmark::desk
