#pragma once

#include <QPair>

class QMimeData;
class QModelIndex;
class QString;

// Placing data on the clipboard and pasting it into the application that has the focus.
namespace ClipboardOps {

// Steps back from the end of the pasted text, then characters to select towards its start;
// steps back -1 means the caret stays where the paste left it.
using CursorSteps = QPair<int, int>;

enum TextMode { WithFormatting = 0, PlainText = 1 };

// Every format of the current clipboard, copied. The caller owns it.
QMimeData *copyOfClipboard();
void setClipboardText(const QString &text);
// Ctrl+V into the focused application. Modifiers the user still holds (from the global
// shortcut) are released first and pressed again 100 ms later.
void paste();
// Pastes the clipboard's text without formatting, then puts the clipboard back after 500 ms.
void pastePlainText();
// Pastes after 200 ms, once the program's own window or menu has given the focus back.
void delayedPaste();
void delayedPasteWithCursor(CursorSteps steps);
void moveCursor(CursorSteps steps);

// A clipping of the history model on the clipboard: its text, with its cleaned HTML unless
// the mode is PlainText; an image clipping as the image or as its cached file.
void putClippingText(const QModelIndex &clipping, int mode);
void putClippingImage(const QModelIndex &clipping, bool asFile);

} // namespace ClipboardOps
