#include "ui/search/searchedit.h"

#include <QKeyEvent>

SearchEdit::SearchEdit(QWidget *parent) : QLineEdit(parent)
{
    setPlaceholderText(tr("Type to search, Alt+1–9 to paste"));
    setAccessibleName(tr("Search"));
    setClearButtonEnabled(true);
}

void SearchEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Down)
        emit downPressed();
    if (event->key() == Qt::Key_Escape) {
        // The first Escape empties the field, the next one closes the window.
        if (text().isEmpty())
            emit escapePressed();
        else
            clear();
        return;
    }
    QLineEdit::keyPressEvent(event);
}
