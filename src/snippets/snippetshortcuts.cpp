#include "snippets/snippetshortcuts.h"

#include "input/inputmanager.h"
#include "qhotkey.h"
#include "snippets/snippet.h"
#include "snippets/snippetitemmodel.h"
#include "snippets/snippetpaster.h"

#include <QDebug>
#include <QStandardItem>

SnippetShortcuts::SnippetShortcuts(SnippetItemModel *model, InputManager *input,
                                   SnippetPaster *paster, QObject *parent)
    : QObject(parent), m_model(model), m_input(input), m_paster(paster)
{
    connect(model, &SnippetItemModel::contentChanged, this, &SnippetShortcuts::apply);
    apply();
}

void SnippetShortcuts::apply()
{
    const QMap<QString, QString> keywords = m_model->keywords();
    m_input->setKeywords(keywords);
    // Keys are only watched while a keyword could match them.
    if (keywords.isEmpty())
        m_input->removeHooks();
    else
        m_input->installHooks();
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
            m_paster->pasteForShortcut(snippet->data(Snippet::TextRole).toString(), text);
        });
        m_hotkeys.append(hotkey);
    }
}
