#include "history/clipping.h"
#include "history/clippingitem.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QLocale>
#include <QStandardItem>
#include <QStandardPaths>

namespace Clipping {

QString briefOf(const QString &text)
{
    // Most copies are one trimmed line: the brief then shares the text's memory.
    const bool oneLine = !text.contains(QLatin1Char('\n')) && !text.contains(QLatin1Char('\t'));
    if (oneLine && !text.isEmpty() && !text.front().isSpace() && !text.back().isSpace())
        return text;
    const QStringList lines = text.trimmed().split(QLatin1Char('\n'));
    QStringList kept;
    kept.reserve(lines.size());
    for (const QString &line : lines) {
        const QString trimmed = line.trimmed();
        if (!trimmed.isEmpty())
            kept.append(trimmed);
    }
    return kept.join(QLatin1Char(' ')).replace(QLatin1Char('\t'), QLatin1Char(' '));
}

QString shortText(const QString &text)
{
    return text.left(50).remove(QLatin1Char('\n'));
}

void removeImageFolder(const QUuid &id)
{
    const QString folder = imageFolder(id);
    if (QDir(folder).exists() && !QDir(folder).removeRecursively())
        qWarning() << "Unable to remove the image folder" << folder;
}

bool isCleared(const QStandardItem *item)
{
    return item->data(RemovedRole).toBool() && item->data(TextRole).toString().isEmpty();
}

void clearContent(QStandardItem *item)
{
    if (isImage(item->data(TypeRole).toInt())) {
        removeImageFolder(item->data(IdRole).toUuid());
        setOptionalText(item, FilenameRole, QString());
    }
    item->setText(QString());
    item->setData(QString(), TextRole);
    setOptionalText(item, HtmlRole, QString());
    item->setData(QString(), ToolTipRole);
    item->setData(QVariant(), ThumbnailRole);
}

void setOptionalText(QStandardItem *item, int role, const QString &value)
{
    if (!value.isEmpty())
        item->setData(value, role);
    else if (item->data(role).isValid()) // an invalid value would be stored, not removed
        item->setData(QVariant(), role);
}

namespace {

QStandardItem *newItem(const QString &brief, int type, const QPixmap &icon,
                       const QString &application, const QDateTime &time)
{
    auto *item = new ClippingItem;
    item->setText(brief);
    item->setEditable(false);
    item->setData(type, TypeRole);
    if (!icon.isNull())
        item->setData(icon, IconRole);
    item->setData(application, ApplicationRole);
    item->setData(QUuid::createUuid(), IdRole);
    item->setData(time, TimeRole);
    item->setData(false, RemovedRole);
    item->setData(false, PinnedRole);
    item->setData(false, LockedRole);
    return item;
}

} // namespace

QStandardItem *newTextItem(const QString &text, const QString &html, const QPixmap &icon,
                           const QString &application, const QDateTime &time)
{
    QStandardItem *item = newItem(briefOf(text), TextType, icon, application, time);
    item->setData(text, TextRole);
    setOptionalText(item, HtmlRole, html);
    item->setData(html.isEmpty() ? text : html, ToolTipRole);
    return item;
}

QStandardItem *newImageItem(const QUrl &source, const QImage &image, const QPixmap &icon,
                            const QString &application, const QDateTime &time)
{
    QString filename;
    if (!source.isEmpty()) {
        filename = source.fileName();
        if (filename.isEmpty())
            filename = source.path().section(QLatin1Char('/'), -1);
    }
    QString label = filename;
    if (filename.isEmpty()) {
        label = QStringLiteral("%1 x %2").arg(image.width()).arg(image.height());
        filename =
            application + QStringLiteral("-%1x%2.png").arg(image.width()).arg(image.height());
    }
    QStandardItem *item = newItem(label, ImageType, icon, application, time);
    item->setData(label, TextRole);
    item->setData(label, ToolTipRole);
    setOptionalText(item, FilenameRole, filename);
    return item;
}

QString imagesRoot()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QDir::separator() +
           QStringLiteral("images");
}

QString idFolderName(const QUuid &id)
{
    return id.toString(QUuid::WithBraces);
}

QString imageFolder(const QUuid &id)
{
    return imagesRoot() + QLatin1Char('/') + idFolderName(id);
}

QString imageFile(const QUuid &id, const QString &fileName)
{
    return imageFolder(id) + QLatin1Char('/') + fileName;
}

QString imageToolTip(const QString &file, const QString &label)
{
    const QSize size = QImageReader(file).size();
    if (!size.isValid())
        return label.toHtmlEscaped();
    const QSize preview = size.boundedTo(size.scaled(QSize(400, 300), Qt::KeepAspectRatio));
    const QString details =
        QCoreApplication::translate("Clipping", "%1 × %2 pixels, %3")
            .arg(size.width())
            .arg(size.height())
            .arg(QLocale().formattedDataSize(QFileInfo(file).size(), 1, QLocale::DataSizeSIFormat));
    return QStringLiteral("<img src=\"%1\" width=\"%2\" height=\"%3\"><br>%4<br>%5")
        .arg(QUrl::fromLocalFile(file).toString().toHtmlEscaped())
        .arg(preview.width())
        .arg(preview.height())
        .arg(label.toHtmlEscaped(), details);
}

} // namespace Clipping
