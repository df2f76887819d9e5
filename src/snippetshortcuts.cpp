#include "snippetshortcuts.h"

#include "clipboardops.h"
#include "historyitemmodel.h"
#include "inputmanager.h"
#include "platform.h"
#include "qhotkey.h"
#include "snippet.h"
#include "snippetitemmodel.h"
#include "snippetplaceholders.h"

#include <QCoreApplication>
#include <QDebug>
#include <QStandardItem>
#include <QTimer>

SnippetShortcuts::SnippetShortcuts(SnippetItemModel *model, QObject *parent)
    : QObject(parent), m_model(model)
{
    connect(model, &SnippetItemModel::contentChanged, this, &SnippetShortcuts::apply);
    apply();
}

void SnippetShortcuts::apply()
{
    const QMap<QString, QString> keywords = m_model->keywords();
    InputManager *input = InputManager::instance();
    input->setKeywords(keywords);
    // Keys are only watched while a keyword could match them.
    if (keywords.isEmpty())
        input->removeHooks();
    else
        input->installHooks();
    registerHotkeys();
}

void SnippetShortcuts::registerHotkeys()
{
    QList<QPair<QString, QString>> wanted;
    QList<const QStandardItem *> snippets;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QStandardItem *group = m_model->item(row);
        for (int child = 0; child < group->rowCount(); ++child) {
            const QStandardItem *snippet = group->child(child);
            const QString hotkey = snippet->data(Snippet::HotkeyRole).toString();
            if (!hotkey.isEmpty()) {
                wanted.append({snippet->data(Snippet::IdRole).toString(), hotkey});
                snippets.append(snippet);
            }
        }
    }
    if (wanted == m_registered)
        return;
    qDeleteAll(m_hotkeys);
    m_hotkeys.clear();
    m_registered = wanted;
    for (int i = 0; i < wanted.size(); ++i) {
        const auto &[id, text] = wanted.at(i);
        auto *hotkey = new QHotkey(this);
        if (!hotkey->setShortcut(QKeySequence::fromString(text), true)) {
            qWarning().noquote() << "Unable to register hotkey" << text << "for snippet"
                                 << snippets.at(i)->text();
            delete hotkey;
            continue;
        }
        connect(hotkey, &QHotkey::activated, this, [this, id = id, text = text] {
            // Looked up when pressed: the text may have changed since it was registered.
            const QStandardItem *snippet = m_model->snippetById(QUuid::fromString(id));
            if (!snippet)
                return;
            QStringList failures;
            pasteSnippet(snippet->data(Snippet::TextRole).toString(), text, &failures);
            for (const QString &failure : std::as_const(failures))
                emit actionFailed(failure);
        });
        m_hotkeys.append(hotkey);
    }
}

void SnippetShortcuts::pasteSnippet(const QString &text, const QString &shortcut,
                                    QStringList *failures)
{
    QString resolved = SnippetPlaceholders::resolve(text, Platform::foregroundApplicationName(),
                                                    HistoryItemModel::clippingTexts(), failures);
    const ClipboardOps::CursorSteps steps = Snippet::caretSteps(resolved);
    resolved.remove(Snippet::cursorMarker);
    ClipboardOps::pasteTextForShortcut(resolved, shortcut);
    QTimer::singleShot(100, QCoreApplication::instance(),
                       [steps] { ClipboardOps::moveCursor(steps); });
}
