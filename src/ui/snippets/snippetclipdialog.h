#pragma once

#include <QDialog>

class QDialogButtonBox;
class QLineEdit;
class QRadioButton;
class QSpinBox;

// Asks which clipping a snippet placeholder takes: the current one, one by its position in
// the history, or the first one that a regular expression matches.
class SnippetClipDialog final : public QDialog
{
    Q_OBJECT

public:
    explicit SnippetClipDialog(QWidget *parent = nullptr);

    // "{CLIP}", "{CLIP:n}" or "{CLIP:expression}", as chosen.
    QString placeholder() const;

private:
    void updateOk();

    QRadioButton *m_current;
    QRadioButton *m_position;
    QRadioButton *m_matching;
    QSpinBox *m_number;
    QLineEdit *m_expression;
    QDialogButtonBox *m_buttons;
};
