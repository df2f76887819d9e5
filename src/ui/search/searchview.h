#pragma once

#include <QListView>

class SearchModel;

// The search results. Activation reports the index of the result's source row, so that the
// window treats it as it treats that row on its own page. A clipping result opens the history's
// menu from the Right arrow or from the square at the row's right end.
class SearchView final : public QListView
{
    Q_OBJECT

public:
    explicit SearchView(QWidget *parent = nullptr);

    void setSearchModel(SearchModel *model);
    void selectFirst();

signals:
    // Shows the history's menu for the clipping; the results are rebuilt once it returns.
    void historyMenuRequested(const QModelIndex &clipping, const QPoint &globalPos);
    void escapePressed();
    void upFromFirstRow();
    void textTyped(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    // The square at the row's right end, as wide as the row is high.
    QRect menuSquare(const QModelIndex &index) const;
    void openHistoryMenu(const QModelIndex &index);

    SearchModel *m_model = nullptr;
};
