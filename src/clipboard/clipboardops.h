#pragma once

#include <QPair>

#include <functional>

class QMimeData;
class QModelIndex;
class QString;

// Placing data on the clipboard and pasting it into the application that has the focus.
namespace ClipboardOps {

// Steps back from the end of the pasted text, then characters to select towards its start;
// steps back -1 means the caret stays where the paste left it.
using CursorSteps = QPair<int, int>;

enum TextMode { WithFormatting = 0, PlainText = 1 };
enum ImageCopy { DecodedImage, EncodedImageOnly };

// Every format of the current clipboard, copied; the caller owns it. Of an image offered in
// several encodings only one is copied (PNG when offered), and decoded into the copy's image
// unless the caller decodes it later.
QMimeData *copyOfClipboard(ImageCopy imageCopy = DecodedImage);
// Every format of data, in a new object owned by the caller.
QMimeData *copyOf(const QMimeData &data);
// Text the program puts on the clipboard for one paste (an expansion, a plain-text paste):
// marked as ours and as private, so that no clipboard history records it.
void setClipboardText(const QString &text);
// A copy of the clipboard to put back after pasting the program's own text; marked as a write
// of its owner, so that no application rule rewrites it on its return. While an earlier
// paste's restore is pending, the content that restore holds is taken over instead.
QMimeData *saveClipboard();
// Puts the saved content back after 500 ms, once the paste has been read; one restore is
// pending at a time.
void restoreClipboardLater(QMimeData *saved);
// The paste keys into the focused application: Ctrl+V, Shift+Insert in terminals, or what
// the user chose for the application. Modifiers the user still holds (from the global
// shortcut) are released first and pressed again 100 ms later.
void paste();
// Pastes text for once in place of the clipboard: the clipboard is saved, the text put on it,
// sendKeys has the paste keys sent (now or later), and the clipboard comes back after 500 ms.
void pasteInstead(const QString &text, const std::function<void()> &sendKeys);
// Places the caret 100 ms from now, once the application has taken the paste.
void moveCursorLater(CursorSteps steps);
// Pastes the clipboard's text without formatting, then puts the clipboard back after 500 ms.
void pastePlainText();
// The paste keys for a global shortcut that the user still holds: the modifiers it names are
// released first.
void pasteForShortcut(const QString &shortcut);
// Pastes text for such a shortcut; the clipboard is put back after 500 ms.
void pasteTextForShortcut(const QString &text, const QString &shortcut);
// Pastes after 200 ms, once the program's own window or menu has given the focus back.
void delayedPaste();
void delayedPasteWithCursor(CursorSteps steps);
void moveCursor(CursorSteps steps);

// A clipping of the history model on the clipboard: its text, with its cleaned HTML unless
// the mode is PlainText; an image clipping as the image or as its cached file. Marked with the
// clipping's application, which the history keeps when the clipping comes back as a copy.
void putClippingText(const QModelIndex &clipping, int mode);
void putClippingImage(const QModelIndex &clipping, bool asFile);

} // namespace ClipboardOps
