#pragma once

#include "history/clipping.h"
#include "history/historyfile.h"

#include <QDateTime>
#include <QPixmap>
#include <QStandardItem>
#include <QString>
#include <QUuid>

// One clipping of the history, its fields held as members rather than as a list of role and
// value pairs: a large history keeps a hundred thousand of them, and the generic item costs
// several times the clipping's text. Reads and writes through the roles of Clipping::Role, so
// views and the model use it like any item. Fields that few clippings have (HTML, a file name,
// a thumbnail) are kept by the item as usual, so that the others do not pay for them. The tool
// tip follows the HTML, or the text when there is none.
class ClippingItem final : public QStandardItem
{
public:
    static constexpr int Type = UserType + 1;

    ClippingItem();

    QVariant data(int role = Qt::UserRole + 1) const override;
    void setData(const QVariant &value, int role = Qt::UserRole + 1) override;
    int type() const override { return Type; }
    QStandardItem *clone() const override { return new ClippingItem(*this); }

    // The clipping as the history file holds it, read without going through the roles.
    HistoryFile::Record record() const;
    quint64 revision() const { return m_revision; }
    const QString &application() const { return *m_application; }
    const QPixmap &icon() const { return m_icon; }
    // The newest revision that any clipping has had.
    static quint64 lastRevision();

private:
    ClippingItem(const ClippingItem &other) = default;

    // False when the value was already there.
    bool assign(const QVariant &value, int role);

    QUuid m_id;
    QDateTime m_time;
    QString m_brief; // most often the very string of the text
    QString m_text;
    const QString *m_application; // shared by the clippings of one program
    QPixmap m_icon;
    qint16 m_flags = -1; // the item flags once set; until then the item's defaults
    // Whether the item holds these: asking it costs a visit to its list for every clipping.
    bool m_hasHtml = false;
    bool m_hasFilename = false;
    qint8 m_type = Clipping::TextType;
    bool m_removed = false;
    bool m_pinned = false;
    bool m_locked = false;
    // New with every change of a field the file holds, so a save can tell unchanged clippings
    // without comparing them.
    quint64 m_revision;
};
