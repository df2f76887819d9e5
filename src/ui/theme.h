#pragma once

class QPalette;

// The program's light and dark looks: the Fusion style with a palette of its own and a small
// style sheet. The Theme setting picks one, or follows the system.
namespace Theme {

enum Choice { Light = 0, Dark = 1, FollowSystem = 2 };

bool isDark(int choice);
QPalette palette(bool dark);
// Applies the choice to the whole application.
void apply(int choice);

} // namespace Theme
