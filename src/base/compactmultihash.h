#pragma once

#include <QHash>
#include <QList>
#include <QMultiHash>

// A multi-hash for keys that are mostly unique: the first value of each key sits in a plain
// hash, and only further values of a key already taken in a multi-hash. A multi-hash allocates
// a node for every value, which for a history of 100,000 clippings comes to megabytes.
template <typename Key, typename T> class CompactMultiHash
{
public:
    void insert(const Key &key, const T &value)
    {
        const auto first = m_first.constFind(key);
        if (first == m_first.constEnd())
            m_first.insert(key, value);
        else
            m_more.insert(key, value);
    }

    // Removes one occurrence of key with value; false when there is none.
    bool remove(const Key &key, const T &value)
    {
        const auto first = m_first.find(key);
        if (first == m_first.end())
            return false;
        if (*first != value) {
            const auto more = m_more.find(key, value);
            if (more == m_more.end())
                return false;
            m_more.erase(more);
            return true;
        }
        if (m_more.contains(key))
            *first = m_more.take(key);
        else
            m_first.erase(first);
        return true;
    }

    // Removes value under whichever key holds it: a walk over all, for the rare value whose
    // key is no longer known.
    void removeValue(const T &value)
    {
        for (auto first = m_first.cbegin(); first != m_first.cend(); ++first) {
            if (*first == value) {
                const Key key = first.key();
                remove(key, value);
                return;
            }
        }
        for (auto more = m_more.begin(); more != m_more.end(); ++more) {
            if (*more == value) {
                m_more.erase(more);
                return;
            }
        }
    }

    QList<T> values(const Key &key) const
    {
        const auto first = m_first.constFind(key);
        if (first == m_first.constEnd())
            return {};
        QList<T> all = m_more.values(key);
        all.append(*first);
        return all;
    }

    bool contains(const Key &key, const T &value) const
    {
        const auto first = m_first.constFind(key);
        return first != m_first.constEnd() && (*first == value || m_more.contains(key, value));
    }

    qsizetype size() const { return m_first.size() + m_more.size(); }
    void reserve(qsizetype count) { m_first.reserve(count); }
    void clear()
    {
        m_first.clear();
        m_more.clear();
    }

private:
    QHash<Key, T> m_first;
    QMultiHash<Key, T> m_more;
};
