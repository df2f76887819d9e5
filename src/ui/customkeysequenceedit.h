#pragma once

#include <QKeySequenceEdit>

// A key-sequence editor for global shortcuts: one key combination, never a second stroke, and
// never a key that would be taken from every program as it is typed. A combination needs
// Control, Alt or the Windows key, unless its key is a function key. Backspace and Delete
// clear the field and Tab moves on, as in any other field.
class CustomKeySequenceEdit final : public QKeySequenceEdit
{
    Q_OBJECT

public:
    using QKeySequenceEdit::QKeySequenceEdit;

    // Whether a key pressed with these modifiers may become a global shortcut.
    static bool isShortcutKey(int key, Qt::KeyboardModifiers modifiers);
    // The editor in a row with a Clear button, for forms.
    static QWidget *withClearButton(CustomKeySequenceEdit *edit);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
