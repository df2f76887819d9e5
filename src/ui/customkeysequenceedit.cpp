#include "ui/customkeysequenceedit.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

namespace {

bool isModifierKey(int key)
{
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
           key == Qt::Key_Meta || key == Qt::Key_AltGr || key == Qt::Key_Super_L ||
           key == Qt::Key_Super_R;
}

} // namespace

bool CustomKeySequenceEdit::isShortcutKey(int key, Qt::KeyboardModifiers modifiers)
{
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return true;
    return modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

void CustomKeySequenceEdit::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool plain = !(modifiers & ~Qt::ShiftModifier);
    if (plain && (key == Qt::Key_Tab || key == Qt::Key_Backtab)) {
        focusNextPrevChild(key == Qt::Key_Tab && modifiers == Qt::NoModifier);
        return;
    }
    if (plain && (key == Qt::Key_Backspace || key == Qt::Key_Delete)) {
        clear();
        return;
    }
    // A modifier alone would start a new recording and empty the field; a plain key would
    // be taken from every program. The combination itself carries its modifiers.
    if (isModifierKey(key) || !isShortcutKey(key, modifiers)) {
        event->accept();
        return;
    }
    QKeySequenceEdit::keyPressEvent(event);
    const QString text = keySequence().toString(QKeySequence::NativeText);
    const QString first = text.split(QStringLiteral(", ")).first();
    if (first != text)
        setKeySequence(QKeySequence::fromString(first, QKeySequence::NativeText));
}

QWidget *CustomKeySequenceEdit::withClearButton(CustomKeySequenceEdit *edit)
{
    auto *row = new QWidget(edit->parentWidget());
    auto *clear = new QToolButton(row);
    clear->setText(tr("Clear"));
    clear->setToolTip(tr("No shortcut"));
    clear->setObjectName(edit->objectName() + QStringLiteral("Clear"));
    connect(clear, &QToolButton::clicked, edit, &QKeySequenceEdit::clear);
    edit->setParent(row);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit, 1);
    layout->addWidget(clear);
    return row;
}
