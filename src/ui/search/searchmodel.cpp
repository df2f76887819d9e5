#include "ui/search/searchmodel.h"

#include "snippets/snippet.h"

#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTimer>

namespace {

char16_t lowered(char16_t c)
{
    if (c < 128)
        return c >= 'A' && c <= 'Z' ? char16_t(c + 32) : c;
    return char16_t(QChar::toLower(char32_t(c)));
}

bool matchesAt(QStringView text, qsizetype at, QStringView needle)
{
    for (qsizetype j = 1; j < needle.size(); ++j) {
        if (lowered(text[at + j].unicode()) != needle[j].unicode())
            return false;
    }
    return true;
}

// The next position at or after from where the character or its other case stands.
qsizetype nextCandidate(QStringView text, QChar first, QChar upper, qsizetype from)
{
    const qsizetype lower = text.indexOf(first, from);
    const qsizetype other = upper == first ? -1 : text.indexOf(upper, from);
    if (lower < 0 || other < 0)
        return qMax(lower, other);
    return qMin(lower, other);
}

// Whether the text lower-cased contains the (lower-case) needle: the answer of comparing
// lower-cased copies, without making one for every row. The first character is found with
// the library's fast scan in both its cases. (A few characters outside ASCII whose lower case
// is an ASCII letter, such as the Kelvin sign, are not taken for that letter there.)
bool containsLowered(QStringView text, QStringView needle)
{
    if (needle.isEmpty())
        return true;
    const QChar first = needle.front();
    const QChar upper = first.toUpper();
    const qsizetype last = text.size() - needle.size();
    for (qsizetype at = nextCandidate(text, first, upper, 0); at >= 0 && at <= last;
         at = nextCandidate(text, first, upper, at + 1)) {
        if (matchesAt(text, at, needle))
            return true;
    }
    return false;
}

} // namespace

SearchModel::SearchModel(QSortFilterProxyModel *history, QStandardItemModel *snippets,
                         QObject *parent)
    : QAbstractListModel(parent), m_history(history), m_snippets(snippets),
      m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    m_timer->setInterval(200);
    connect(m_timer, &QTimer::timeout, this, &SearchModel::update);
    // Any change to the history's rows makes the next search read them again.
    connect(history, &QAbstractItemModel::rowsInserted, this, &SearchModel::forgetBriefs);
    connect(history, &QAbstractItemModel::rowsRemoved, this, &SearchModel::forgetBriefs);
    connect(history, &QAbstractItemModel::rowsMoved, this, &SearchModel::forgetBriefs);
    connect(history, &QAbstractItemModel::modelReset, this, &SearchModel::forgetBriefs);
    connect(history, &QAbstractItemModel::layoutChanged, this, &SearchModel::forgetBriefs);
    connect(history, &QAbstractItemModel::dataChanged, this,
            [this](const QModelIndex &, const QModelIndex &, const QList<int> &roles) {
                // A thumbnail arriving changes nothing that is searched.
                if (roles.isEmpty() || roles.contains(Qt::DisplayRole))
                    forgetBriefs();
            });
}

void SearchModel::prepare()
{
    historyBriefs();
}

const QStringList &SearchModel::historyBriefs()
{
    // Read once while the history stays as it is: the strings are shared with the history, so
    // the list costs no more than its pointers, and typing on searches them without asking the
    // model for every row again.
    if (m_briefsValid)
        return m_briefs;
    m_briefs.clear();
    const int rows = m_history->rowCount();
    m_briefs.reserve(rows);
    for (int row = 0; row < rows; ++row)
        m_briefs.append(m_history->index(row, 0).data(Qt::DisplayRole).toString());
    m_briefsValid = true;
    return m_briefs;
}

void SearchModel::forgetBriefs()
{
    m_briefsValid = false;
    m_briefs.clear();
}

void SearchModel::setSearchText(const QString &text)
{
    m_text = text.trimmed().toLower();
    m_timer->stop();
    m_timer->start();
}

bool SearchModel::isHistoryIndex(const QModelIndex &source) const
{
    return source.model() == m_history;
}

QModelIndex SearchModel::sourceIndex(const QModelIndex &result)
{
    return result.data(SourceRole).value<QModelIndex>();
}

void SearchModel::update()
{
    beginResetModel();
    m_results.clear();
    if (m_text.isEmpty()) {
        forgetBriefs();
        endResetModel();
        emit updated();
        return;
    }
    const QStringList &briefs = historyBriefs();
    for (int row = 0; row < briefs.size(); ++row) {
        if (containsLowered(briefs.at(row), m_text))
            m_results.append(m_history->index(row, 0));
    }
    for (int group = 0; group < m_snippets->rowCount(); ++group) {
        const QModelIndex parent = m_snippets->index(group, 0);
        for (int row = 0; row < m_snippets->rowCount(parent); ++row) {
            const QModelIndex snippet = m_snippets->index(row, 0, parent);
            if (containsLowered(snippet.data(Qt::DisplayRole).toString(), m_text) ||
                containsLowered(snippet.data(Snippet::TextRole).toString(), m_text))
                m_results.append(snippet);
        }
    }
    endResetModel();
    emit updated();
}

void SearchModel::updateNow()
{
    if (!m_timer->isActive())
        return;
    m_timer->stop();
    update();
}

int SearchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_results.size());
}

QVariant SearchModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const QModelIndex &source = m_results.at(index.row());
    if (role == SourceRole)
        return QVariant::fromValue(source);
    return source.data(role);
}
