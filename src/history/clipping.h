#pragma once

#include <QDateTime>
#include <QPixmap>
#include <QString>
#include <QUrl>
#include <QUuid>

class QImage;
class QStandardItem;

// The clipping record: one history entry kept as item data of a QStandardItem. The role
// numbers are part of the record; every view, the history file and sync read them.
namespace Clipping {

enum Role : int {
    BriefRole = Qt::DisplayRole,
    IconRole = Qt::DecorationRole,
    ToolTipRole = Qt::ToolTipRole,
    PinnedRole = Qt::CheckStateRole,
    HtmlRole = Qt::UserRole,
    TextRole = Qt::UserRole + 1,
    IdRole = Qt::UserRole + 2,
    TimeRole = Qt::UserRole + 3,
    RemovedRole = Qt::UserRole + 5,
    ApplicationRole = Qt::UserRole + 9,
    ThumbnailRole = Qt::UserRole + 10,
    TypeRole = Qt::UserRole + 11,
    FilenameRole = Qt::UserRole + 12,
    LockedRole = Qt::UserRole + 21,
};

enum Type : int { TextType = 0, ImageType = 1, OldImageType = 2 };

inline bool isImage(int type)
{
    return type == ImageType || type == OldImageType;
}

// A clipping cleared from the history: only its id, time and removal mark are left, so that
// the clearing reaches other computers while none of its content stays on disk.
bool isCleared(const QStandardItem *item);
// Empties the clipping down to that mark; an image's folder is deleted.
void clearContent(QStandardItem *item);

// One line: the text's non-blank lines, trimmed, joined by a blank; tabs become blanks.
QString briefOf(const QString &text);
// The text as it appears in log lines: at most 50 characters, line feeds removed.
QString shortText(const QString &text);

// Sets a text field, or leaves it out when it is empty (reading it then gives an empty text).
// Most clippings have no HTML and no file name; each field less keeps a clipping in a smaller
// block of memory, which counts in histories of many thousand clippings.
void setOptionalText(QStandardItem *item, int role, const QString &value);

QStandardItem *newTextItem(const QString &text, const QString &html, const QPixmap &icon,
                           const QString &application, const QDateTime &time);
// The label and file name come from the URL's file name, or else from the size and the
// application ("app.exe-640x480.png").
QStandardItem *newImageItem(const QUrl &source, const QImage &image, const QPixmap &icon,
                            const QString &application, const QDateTime &time);

// "images" in the application data folder, and one clipping's folder inside it.
QString imagesRoot();
QString imageFolder(const QUuid &id);
QString imageFile(const QUuid &id, const QString &fileName);
QString idFolderName(const QUuid &id);
// A tool tip with a preview larger than the thumbnail, the label, the size in pixels and on
// disk; read from the file's header when asked, so that no clipping carries it.
QString imageToolTip(const QString &file, const QString &label);
// Deletes a clipping's image folder; a failure is logged.
void removeImageFolder(const QUuid &id);

} // namespace Clipping
