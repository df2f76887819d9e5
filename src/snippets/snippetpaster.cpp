#include "snippets/snippetpaster.h"

#include "history/historyitemmodel.h"
#include "platform/platform.h"
#include "snippets/snippet.h"
#include "snippets/snippetplaceholders.h"

SnippetPaster::SnippetPaster(const HistoryItemModel *history, QObject *parent)
    : QObject(parent), m_history(history)
{}

PasteText SnippetPaster::resolve(const QString &snippetText, const QString &application) const
{
    PasteText result;
    result.text = SnippetPlaceholders::resolve(snippetText, application, m_history->clippingTexts(),
                                               &result.failures);
    result.steps = Snippet::caretSteps(result.text);
    result.text.remove(Snippet::cursorMarker);
    return result;
}

void SnippetPaster::paste(const QString &snippetText, const QString &application,
                          const std::function<void(ClipboardOps::CursorSteps)> &sendKeys)
{
    const PasteText resolved = resolve(snippetText, application);
    ClipboardOps::pasteInstead(resolved.text, [&] { sendKeys(resolved.steps); });
    for (const QString &failure : resolved.failures)
        emit actionFailed(failure);
}

void SnippetPaster::pasteForShortcut(const QString &snippetText, const QString &shortcut)
{
    paste(snippetText, Platform::foregroundApplicationName(),
          [&shortcut](ClipboardOps::CursorSteps steps) {
              ClipboardOps::pasteForShortcut(shortcut);
              ClipboardOps::moveCursorLater(steps);
          });
}
