#include "customkeysequenceedit.h"

void CustomKeySequenceEdit::keyPressEvent(QKeyEvent *event)
{
    QKeySequenceEdit::keyPressEvent(event);
    const QString text = keySequence().toString(QKeySequence::NativeText);
    const QString first = text.split(QStringLiteral(", ")).first();
    if (first != text)
        setKeySequence(QKeySequence::fromString(first, QKeySequence::NativeText));
}
