#pragma once

#include <QKeySequenceEdit>

// A key-sequence editor that keeps one key combination: global shortcuts have no second
// stroke.
class CustomKeySequenceEdit final : public QKeySequenceEdit
{
    Q_OBJECT

public:
    using QKeySequenceEdit::QKeySequenceEdit;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
