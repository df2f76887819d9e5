#pragma once

#include <QAbstractListModel>
#include <QModelIndex>
#include <QStringList>

class QSortFilterProxyModel;
class QStandardItemModel;
class QTimer;

// The search results: the history's clippings and then the snippets whose text contains what
// was typed, each row pointing back to its item in its own model, and showing what it shows.
// Rebuilt from scratch once typing pauses for 200 ms. A result is no more than its source's
// index: tens of thousands of them are made in a few milliseconds.
class SearchModel final : public QAbstractListModel
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
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    // A result shows its source's data; SourceRole gives the source's index.
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

    QSortFilterProxyModel *m_history;
    QStandardItemModel *m_snippets;
    QString m_text;
    QTimer *m_timer;
    QStringList m_briefs;
    QList<QModelIndex> m_results;
    bool m_briefsValid = false;
};
