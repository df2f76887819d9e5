#pragma once

#include <QDialog>
#include <QKeySequence>

class CustomKeySequenceEdit;

// Asks for one key combination, for a snippet's or an action's global shortcut.
class ShortcutDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit ShortcutDialog(const QKeySequence &current = {}, QWidget *parent = nullptr);

    QKeySequence shortcut() const;

private:
    CustomKeySequenceEdit *m_edit;
};
