#pragma once

#include <QPersistentModelIndex>
#include <QWidget>

class CustomKeySequenceEdit;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QTimer;
class QToolButton;
class QTreeView;
class SnippetItemModel;

// Where the user keeps the snippet tree: groups and snippets on the left, the chosen one's
// title, keyword, shortcut and text on the right. Every change goes to the model at once (the
// text after a short pause in typing), which saves it.
class SnippetsEditor final : public QWidget
{
    Q_OBJECT

public:
    explicit SnippetsEditor(SnippetItemModel *model, QWidget *parent = nullptr);

    QTreeView *tree() const { return m_tree; }
    void select(const QModelIndex &index);

    void addGroup();
    void addSnippet();
    void removeCurrent();
    void moveCurrent(int delta);
    // Puts the caret marker at the caret, or one on each side of the selection.
    void insertCursorMarker();
    void insertClipPlaceholder();

private:
    void createWidgets();
    void showCurrent();
    void applyText();
    void updateKeywordWarning();
    void fillMoveMenu();
    bool isSnippet(const QModelIndex &index) const;

    SnippetItemModel *m_model;
    QPersistentModelIndex m_current;
    bool m_showing = false;
    QTreeView *m_tree = nullptr;
    QLineEdit *m_title = nullptr;
    QLineEdit *m_keyword = nullptr;
    QLabel *m_keywordWarning = nullptr;
    CustomKeySequenceEdit *m_hotkey = nullptr;
    QCheckBox *m_hide = nullptr;
    QPlainTextEdit *m_text = nullptr;
    QToolButton *m_moveTo = nullptr;
    QMenu *m_moveMenu = nullptr;
    QTimer *m_textTimer = nullptr;
    QList<QWidget *> m_snippetOnly;
};
