#include "clipboard/clipboardmarks.h"

#include <QMimeData>
#include <QStringList>
#include <QtEndian>

namespace {

// Windows clipboard formats reach Qt under this wrapper when no converter knows them.
QString windowsFormat(const QString &name)
{
    return QStringLiteral("application/x-qt-windows-mime;value=\"%1\"").arg(name);
}

QString formatName(const QString &format)
{
    static const QString prefix = QStringLiteral("application/x-qt-windows-mime;value=\"");
    if (format.startsWith(prefix) && format.endsWith(QLatin1Char('"')))
        return format.mid(prefix.size(), format.size() - prefix.size() - 1);
    return format;
}

const QString excludeFromMonitoring =
    QStringLiteral("ExcludeClipboardContentFromMonitorProcessing");
const QString viewerIgnore = QStringLiteral("Clipboard Viewer Ignore");
const QString includeInHistory = QStringLiteral("CanIncludeInClipboardHistory");
const QString passwordHint = QStringLiteral("x-kde-passwordManagerHint");

bool isZeroDword(const QByteArray &bytes)
{
    return bytes.size() >= 4 && qFromLittleEndian<quint32>(bytes.constData()) == 0;
}

} // namespace

namespace ClipboardMarks {

QString ownerFormat()
{
    return QStringLiteral("x-velmorin-application");
}

void setOwner(QMimeData *data, const QString &application)
{
    data->setData(ownerFormat(), application.toUtf8());
}

QString owner(const QMimeData &data)
{
    if (!data.hasFormat(ownerFormat()))
        return QString();
    const QString name = QString::fromUtf8(data.data(ownerFormat()));
    return name.isNull() ? QStringLiteral("") : name;
}

bool isPrivate(const QMimeData &data)
{
    const QStringList formats = data.formats();
    for (const QString &format : formats) {
        const QString name = formatName(format);
        if (name == excludeFromMonitoring || name == viewerIgnore)
            return true;
        if (name == includeInHistory && isZeroDword(data.data(format)))
            return true;
        if (name == passwordHint && data.data(format).trimmed() == "secret")
            return true;
    }
    return false;
}

void markPrivate(QMimeData *data, System system)
{
    if (system == System::X11) {
        data->setData(passwordHint, QByteArrayLiteral("secret"));
        return;
    }
    // Windows reads the DWORD; the other two count by their presence alone.
    data->setData(windowsFormat(includeInHistory), QByteArray(4, '\0'));
    data->setData(windowsFormat(excludeFromMonitoring), QByteArray(1, '\0'));
    data->setData(windowsFormat(viewerIgnore), QByteArray(1, '\0'));
}

} // namespace ClipboardMarks
