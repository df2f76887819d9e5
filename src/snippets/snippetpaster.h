#pragma once

#include "clipboard/pastetext.h"

#include <QObject>

#include <functional>

class HistoryItemModel;

// Every paste of a snippet goes through here: from the window, by its shortcut and by its
// keyword. The text's placeholders are resolved against the history and the application, the
// caret marker becomes caret steps, and the text is pasted in place of the clipboard, which
// comes back afterwards.
class SnippetPaster final : public QObject
{
    Q_OBJECT

public:
    explicit SnippetPaster(const HistoryItemModel *history, QObject *parent = nullptr);

    PasteText resolve(const QString &snippetText, const QString &application) const;
    // sendKeys has the paste keys sent and the caret placed by the steps it is given.
    void paste(const QString &snippetText, const QString &application,
               const std::function<void(ClipboardOps::CursorSteps)> &sendKeys);
    // For a global shortcut that the user still holds.
    void pasteForShortcut(const QString &snippetText, const QString &shortcut);

signals:
    // An action named in the snippet failed; message is for the user.
    void actionFailed(const QString &message);

private:
    const HistoryItemModel *m_history;
};
