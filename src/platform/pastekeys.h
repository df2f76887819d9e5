#pragma once

#include <QString>

// The keys that paste in the window in front. Most programs paste with Ctrl+V; terminals take
// Ctrl+V as a control character and paste with Shift+Insert, which on X11 inserts the primary
// selection. The user may choose other keys for an application.
namespace PasteKeys {

enum Key { Automatic, ControlV, ShiftInsert, ControlShiftV };

// Whether a window class (X11 WM_CLASS, or a Win32 window class) is a terminal emulator's;
// case does not matter.
bool isTerminal(const QString &windowClass);
// The keys to send: the user's choice for the application, else Shift+Insert in a terminal,
// else Ctrl+V.
Key resolve(Key chosen, const QString &windowClass);
// How the settings spell a choice; Automatic is not stored.
QString name(Key key);
Key fromName(const QString &name);

} // namespace PasteKeys
