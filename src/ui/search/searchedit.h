#pragma once

#include <QLineEdit>

// The search field above the pages. Down moves into the results, which the window arranges
// through downPressed.
class SearchEdit final : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchEdit(QWidget *parent = nullptr);

signals:
    void downPressed();
    void escapePressed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
