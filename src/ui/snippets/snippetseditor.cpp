#include "ui/snippets/snippetseditor.h"

#include "base/settings.h"
#include "snippets/snippet.h"
#include "snippets/snippetitemmodel.h"
#include "ui/customkeysequenceedit.h"
#include "ui/snippets/snippetclipdialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QStandardItem>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

QToolButton *toolButton(const QString &text, const QString &name, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setText(text);
    button->setObjectName(name);
    button->setAutoRaise(true);
    return button;
}

} // namespace

SnippetsEditor::SnippetsEditor(SnippetItemModel *model, QWidget *parent)
    : QWidget(parent), m_model(model), m_textTimer(new QTimer(this))
{
    setObjectName(QStringLiteral("snippetsEditor"));
    m_textTimer->setSingleShot(true);
    m_textTimer->setInterval(400);
    connect(m_textTimer, &QTimer::timeout, this, &SnippetsEditor::applyText);
    createWidgets();
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) {
                applyText(); // what was typed into the one left
                m_current = current;
                showCurrent();
            });
    showCurrent();
}

void SnippetsEditor::createWidgets()
{
    m_tree = new QTreeView(this);
    m_tree->setObjectName(QStringLiteral("snippetTree"));
    m_tree->setModel(m_model);
    m_tree->setHeaderHidden(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->expandAll();
    connect(m_model, &QAbstractItemModel::rowsInserted, m_tree, &QTreeView::expandAll);

    auto *newGroup = toolButton(tr("New group"), QStringLiteral("newGroup"), this);
    auto *newSnippet = toolButton(tr("New snippet"), QStringLiteral("newSnippet"), this);
    auto *remove = toolButton(tr("Delete"), QStringLiteral("delete"), this);
    auto *up = toolButton(tr("Up"), QStringLiteral("up"), this);
    auto *down = toolButton(tr("Down"), QStringLiteral("down"), this);
    m_moveTo = toolButton(tr("Move to"), QStringLiteral("moveTo"), this);
    m_moveMenu = new QMenu(m_moveTo);
    m_moveTo->setMenu(m_moveMenu);
    m_moveTo->setPopupMode(QToolButton::InstantPopup);
    connect(m_moveMenu, &QMenu::aboutToShow, this, &SnippetsEditor::fillMoveMenu);
    connect(newGroup, &QToolButton::clicked, this, &SnippetsEditor::addGroup);
    connect(newSnippet, &QToolButton::clicked, this, &SnippetsEditor::addSnippet);
    connect(remove, &QToolButton::clicked, this, &SnippetsEditor::removeCurrent);
    connect(up, &QToolButton::clicked, this, [this] { moveCurrent(-1); });
    connect(down, &QToolButton::clicked, this, [this] { moveCurrent(1); });

    m_title = new QLineEdit(this);
    m_title->setObjectName(QStringLiteral("title"));
    m_keyword = new QLineEdit(this);
    m_keyword->setObjectName(QStringLiteral("keyword"));
    m_keyword->setPlaceholderText(tr("Typed anywhere, replaced by the text"));
    m_keywordWarning = new QLabel(this);
    m_keywordWarning->setObjectName(QStringLiteral("keywordWarning"));
    m_keywordWarning->setStyleSheet(QStringLiteral("color: #c0392b;"));
    m_keywordWarning->setWordWrap(true);
    m_hotkey = new CustomKeySequenceEdit(this);
    m_hotkey->setObjectName(QStringLiteral("hotkey"));
    m_hide = new QCheckBox(tr("Hide the text in the lists"), this);
    m_hide->setObjectName(QStringLiteral("hide"));
    m_text = new QPlainTextEdit(this);
    m_text->setObjectName(QStringLiteral("text"));
    auto *cursor = toolButton(tr("Cursor"), QStringLiteral("cursor"), this);
    cursor->setToolTip(tr("Where the caret goes after pasting; around a selection, what is "
                          "selected"));
    auto *placeholder = toolButton(tr("Clipping..."), QStringLiteral("placeholder"), this);
    placeholder->setToolTip(tr("Inserts a text from the clipboard history when pasted"));
    connect(cursor, &QToolButton::clicked, this, &SnippetsEditor::insertCursorMarker);
    connect(placeholder, &QToolButton::clicked, this, &SnippetsEditor::insertClipPlaceholder);

    connect(m_title, &QLineEdit::textEdited, this, [this](const QString &title) {
        if (!m_showing)
            m_model->setTitle(m_current, title);
    });
    connect(m_keyword, &QLineEdit::textEdited, this, [this](const QString &keyword) {
        m_model->setSnippetData(m_current, Snippet::ExpanderRole, keyword);
        updateKeywordWarning();
    });
    connect(m_hotkey, &QKeySequenceEdit::keySequenceChanged, this,
            [this](const QKeySequence &sequence) {
                if (!m_showing)
                    m_model->setSnippetData(m_current, Snippet::HotkeyRole, sequence.toString());
            });
    connect(m_hide, &QCheckBox::toggled, this, [this](bool hide) {
        if (!m_showing)
            m_model->setSnippetData(m_current, Snippet::HideRole, hide);
    });
    connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
        if (!m_showing)
            m_textTimer->start();
    });

    auto *treeButtons = new QHBoxLayout;
    for (QToolButton *button : {newGroup, newSnippet, remove, up, down, m_moveTo})
        treeButtons->addWidget(button);
    treeButtons->addStretch(1);
    auto *left = new QWidget(this);
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->addLayout(treeButtons);
    leftLayout->addWidget(m_tree, 1);

    auto *textButtons = new QHBoxLayout;
    textButtons->addWidget(new QLabel(tr("Text:"), this), 1);
    textButtons->addWidget(cursor);
    textButtons->addWidget(placeholder);
    auto *fields = new QFormLayout;
    fields->addRow(tr("Title:"), m_title);
    fields->addRow(tr("Keyword:"), m_keyword);
    fields->addRow(QString(), m_keywordWarning);
    fields->addRow(tr("Shortcut:"), CustomKeySequenceEdit::withClearButton(m_hotkey));
    fields->addRow(QString(), m_hide);
    auto *right = new QWidget(this);
    auto *rightLayout = new QVBoxLayout(right);
    rightLayout->setContentsMargins(0, 0, 0, 0);
    rightLayout->addLayout(fields);
    rightLayout->addLayout(textButtons);
    rightLayout->addWidget(m_text, 1);
    m_snippetOnly = {m_keyword, m_hotkey, m_hide, m_text, cursor, placeholder, m_moveTo};

    auto *splitter = new QSplitter(this);
    splitter->addWidget(left);
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({240, 420});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
}

bool SnippetsEditor::isSnippet(const QModelIndex &index) const
{
    return index.isValid() && index.parent().isValid();
}

void SnippetsEditor::select(const QModelIndex &index)
{
    m_tree->setCurrentIndex(index);
}

void SnippetsEditor::showCurrent()
{
    m_showing = true;
    const bool snippet = isSnippet(m_current);
    m_title->setEnabled(m_current.isValid());
    m_title->setText(m_current.data(Qt::DisplayRole).toString());
    for (QWidget *widget : std::as_const(m_snippetOnly))
        widget->setEnabled(snippet);
    m_keyword->setText(m_current.data(Snippet::ExpanderRole).toString());
    m_hotkey->setKeySequence(
        QKeySequence::fromString(m_current.data(Snippet::HotkeyRole).toString()));
    m_hide->setChecked(m_current.data(Snippet::HideRole).toBool());
    m_text->setPlainText(m_current.data(Snippet::TextRole).toString());
    updateKeywordWarning();
    m_showing = false;
}

void SnippetsEditor::applyText()
{
    m_textTimer->stop();
    if (isSnippet(m_current))
        m_model->setSnippetData(m_current, Snippet::TextRole, m_text->toPlainText());
}

void SnippetsEditor::updateKeywordWarning()
{
    const QString keyword = m_keyword->text();
    QString warning;
    const QString owner = m_model->keywordOwner(keyword, m_current);
    const QModelIndex clash = m_model->keywordPrefixClash(keyword, m_current);
    if (!owner.isEmpty()) {
        warning = tr("\"%1\" already has this keyword; typing it pastes the first of the two "
                     "in the list.")
                      .arg(owner);
    } else if (clash.isValid() && !Settings::value(SettingsKey::RequireSpace).toBool()) {
        const QString other = clash.data(Snippet::ExpanderRole).toString();
        warning = keyword.startsWith(other)
                      ? tr("\"%1\" has the keyword \"%2\", which begins this one: it expands "
                           "first, and this keyword can never be typed.")
                            .arg(clash.data().toString(), other)
                      : tr("This keyword begins \"%2\" of \"%1\", which can then never be "
                           "typed.")
                            .arg(clash.data().toString(), other);
    }
    m_keywordWarning->setText(warning);
    m_keywordWarning->setVisible(!warning.isEmpty());
}

void SnippetsEditor::addGroup()
{
    const QModelIndex group = m_model->addGroup(tr("New group"));
    select(group);
    m_title->setFocus();
    m_title->selectAll();
}

void SnippetsEditor::addSnippet()
{
    QModelIndex group = isSnippet(m_current) ? m_current.parent() : QModelIndex(m_current);
    if (!group.isValid())
        group = m_model->rowCount() > 0 ? m_model->index(0, 0) : m_model->addGroup(tr("Snippets"));
    select(m_model->addSnippet(group, tr("New snippet"), QString()));
    m_title->setFocus();
    m_title->selectAll();
}

void SnippetsEditor::removeCurrent()
{
    if (!m_current.isValid())
        return;
    const QString question = isSnippet(m_current)
                                 ? tr("Delete the snippet '%1'?")
                                 : tr("Delete the group '%1' with all its snippets?");
    if (QMessageBox::question(this, QStringLiteral("Velmorin"),
                              question.arg(m_current.data().toString())) != QMessageBox::Yes)
        return;
    m_textTimer->stop();
    m_model->removeItem(m_current);
}

void SnippetsEditor::moveCurrent(int delta)
{
    applyText();
    const QModelIndex moved = m_current.sibling(m_current.row() + delta, 0);
    if (m_model->moveItem(m_current, delta))
        select(moved);
}

void SnippetsEditor::fillMoveMenu()
{
    m_moveMenu->clear();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QPersistentModelIndex group = m_model->index(row, 0);
        QAction *action = m_moveMenu->addAction(group.data().toString(), this, [this, group] {
            applyText();
            select(m_model->moveToGroup(m_current, group));
        });
        action->setEnabled(group != m_current.parent());
    }
}

void SnippetsEditor::insertCursorMarker()
{
    QTextCursor cursor = m_text->textCursor();
    const QString marker(Snippet::cursorMarker);
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    // The end first, so that the start keeps its place; the selection stays between them.
    cursor.beginEditBlock();
    cursor.setPosition(end);
    cursor.insertText(marker);
    if (start != end) {
        cursor.setPosition(start);
        cursor.insertText(marker);
        cursor.setPosition(start + 1);
        cursor.setPosition(end + 1, QTextCursor::KeepAnchor);
    }
    cursor.endEditBlock();
    m_text->setTextCursor(cursor);
    m_text->setFocus();
}

void SnippetsEditor::insertClipPlaceholder()
{
    SnippetClipDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        m_text->textCursor().insertText(dialog.placeholder());
    m_text->setFocus();
}
