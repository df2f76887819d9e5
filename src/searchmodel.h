#pragma once

#include <QStandardItemModel>

class QSortFilterProxyModel;
class QTimer;

// The search results: the history's clippings and then the snippets whose text contains what
// was typed, each row pointing back to its item in its own model. Rebuilt from scratch once
// typing pauses for 200 ms.
class SearchModel final : public QStandardItemModel
{
    Q_OBJECT

public:
    // The role under which a result keeps the index of its source row.
    static constexpr int SourceRole = Qt::UserRole + 13;

    // history: the rows as the history list shows them; snippets: the snippet tree.
    SearchModel(QSortFilterProxyModel *history, QStandardItemModel *snippets,
                QObject *parent = nullptr);

    QString searchText() const { return m_text; }
    bool isHistoryIndex(const QModelIndex &source) const;
    static QModelIndex sourceIndex(const QModelIndex &result);
    // A result's tool tip is its source's, asked for when shown.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    // Reads the history's rows ahead of the first search, while the user is still to type.
    void prepare();

public slots:
    void setSearchText(const QString &text);
    void update();
    // Rebuilds at once when typing has not paused yet, for keys that need the results now.
    void updateNow();

signals:
    // The results were made again.
    void updated();

private:
    const QStringList &historyBriefs();
    void forgetBriefs();
    static QStandardItem *newResult(const QModelIndex &source, const QString &display);

    QSortFilterProxyModel *m_history;
    QStandardItemModel *m_snippets;
    QString m_text;
    QTimer *m_timer;
    QStringList m_briefs;
    bool m_briefsValid = false;
};
