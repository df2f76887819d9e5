#include "clipboard/clipboardops.h"

#include "clipboard/clipboardmarks.h"
#include "history/applicationrules.h"
#include "history/clipping.h"
#include "platform/idesktop.h"
#include "platform/keysender.h"
#include "platform/platform.h"
#include "platform/virtualkeys.h"

#include <QClipboard>
#include <QDebug>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QKeySequence>
#include <QMimeData>
#include <QModelIndex>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace {

bool delayedPastePending = false;

// The user's clipboard while one of the program's pastes holds it, until it goes back.
QMimeData *pendingRestore = nullptr;

QTimer *restoreTimer()
{
    static QTimer *timer = [] {
        auto *timer = new QTimer(QCoreApplication::instance());
        timer->setSingleShot(true);
        QObject::connect(timer, &QTimer::timeout, timer, [] {
            QGuiApplication::clipboard()->setMimeData(std::exchange(pendingRestore, nullptr),
                                                      QClipboard::Clipboard);
        });
        return timer;
    }();
    return timer;
}

QClipboard *clipboard()
{
    return QGuiApplication::clipboard();
}

// The modifier keys behind Qt's flags, in the order they are pressed again.
constexpr struct
{
    Qt::KeyboardModifier flag;
    quint32 virtualKey;
} modifierKeys[] = {
    {Qt::ShiftModifier, VirtualKey::Shift},
    {Qt::ControlModifier, VirtualKey::Control},
    {Qt::AltModifier, VirtualKey::Alt},
    {Qt::MetaModifier, VirtualKey::LeftWindows},
};

void sendModifiers(Qt::KeyboardModifiers held, bool down)
{
    for (const auto &modifier : modifierKeys) {
        if (held & modifier.flag)
            KeySender::sendKey(modifier.virtualKey, down, 0);
    }
}

bool takeDelayedPaste()
{
    if (delayedPastePending) {
        qWarning() << "Delayed paste operation is already ongoing. Ignoring the second paste "
                      "command.";
        return false;
    }
    delayedPastePending = true;
    return true;
}

// The image encoding to copy: PNG when offered, else the first one that can be read.
QString imageFormatToCopy(const QStringList &formats)
{
    const QString png = QStringLiteral("image/png");
    if (formats.contains(png))
        return png;
    const QList<QByteArray> readable = QImageReader::supportedMimeTypes();
    for (const QString &format : formats) {
        if (format.startsWith(QLatin1String("image/")) && readable.contains(format.toLatin1()))
            return format;
    }
    return QString();
}

// X11 protocol targets that Qt lists among the formats. Asking for them is not reading
// content: DELETE clears the selection, BITMAP and PIXMAP make server resources.
bool isProtocolTarget(const QString &format)
{
    static const QStringList targets{
        QStringLiteral("TARGETS"),         QStringLiteral("MULTIPLE"),
        QStringLiteral("TIMESTAMP"),       QStringLiteral("SAVE_TARGETS"),
        QStringLiteral("DELETE"),          QStringLiteral("INSERT_SELECTION"),
        QStringLiteral("INSERT_PROPERTY"), QStringLiteral("BITMAP"),
        QStringLiteral("PIXMAP"),          QStringLiteral("DRAWABLE"),
        QStringLiteral("COLORMAP")};
    return targets.contains(format);
}

QString programName()
{
    return QFileInfo(QCoreApplication::applicationFilePath()).fileName();
}

// Text the program places for one paste: marked as its own and as private, so that no
// clipboard history records it.
void placeOwnText(const QString &text, QClipboard::Mode mode)
{
    auto *data = new QMimeData;
    data->setText(text);
    ClipboardMarks::setOwner(data, programName());
    ClipboardMarks::markPrivate(data);
    clipboard()->setMimeData(data, mode);
}

// The keys that paste in the window in front: the user's choice for its application, else
// those of its kind.
PasteKeys::Key pasteKeyHere()
{
    IDesktop *desktop = Platform::desktop();
    return PasteKeys::resolve(ApplicationRules::pasteKey(desktop->foregroundApplicationName()),
                              desktop->foregroundWindowClass());
}

// Shift+Insert inserts the primary selection in X11 terminals: it holds the clipboard's text
// for the paste, and what the user had selected comes back afterwards for a middle click.
void lendClipboardToSelection()
{
    if (!clipboard()->supportsSelection())
        return;
    // A selection this program holds is one lent by an earlier paste, not the user's.
    const QString selected =
        clipboard()->ownsSelection() ? QString() : clipboard()->text(QClipboard::Selection);
    placeOwnText(clipboard()->text(), QClipboard::Selection);
    QTimer::singleShot(500, QCoreApplication::instance(), [selected] {
        if (!selected.isEmpty())
            clipboard()->setText(selected, QClipboard::Selection);
    });
}

void tapPasteKey(PasteKeys::Key key)
{
    switch (key) {
    case PasteKeys::ShiftInsert:
        lendClipboardToSelection();
        KeySender::tapKey(VirtualKey::Insert, KeyModifier::Shift);
        break;
    case PasteKeys::ControlShiftV:
        KeySender::tapCharacter(QLatin1Char('v'), KeyModifier::Control | KeyModifier::Shift);
        break;
    default:
        KeySender::tapCharacter(QLatin1Char('v'), KeyModifier::Control);
        break;
    }
}

} // namespace

namespace ClipboardOps {

QMimeData *saveClipboard()
{
    // An earlier paste has not put the user's content back yet: the clipboard holds that
    // paste's text, and the user's content is what must come back after this one too.
    if (pendingRestore) {
        restoreTimer()->stop();
        return std::exchange(pendingRestore, nullptr);
    }
    QMimeData *saved = copyOfClipboard();
    // Put back as our own write, so that no application rule rewrites it on its return.
    if (ClipboardMarks::owner(*saved).isNull())
        ClipboardMarks::setOwner(saved, Platform::foregroundApplicationName());
    return saved;
}

void restoreClipboardLater(QMimeData *saved)
{
    delete std::exchange(pendingRestore, saved);
    restoreTimer()->start(500);
}

QMimeData *copyOfClipboard(ImageCopy imageCopy)
{
    auto *copy = new QMimeData;
    const QMimeData *current = clipboard()->mimeData();
    if (!current)
        return copy;
    const QStringList formats = current->formats();
    const QString imageFormat = imageFormatToCopy(formats);
    for (const QString &format : formats) {
        // The owner makes each encoding on request: an 8K image in every format it offers
        // would take seconds. Qt's own image format is the decoded image, set below.
        const bool otherEncoding =
            format.startsWith(QLatin1String("image/")) && format != imageFormat;
        if (!otherEncoding && !isProtocolTarget(format) &&
            format != QLatin1String("application/x-qt-image"))
            copy->setData(format, current->data(format));
    }
    if (imageFormat.isEmpty()) {
        if (current->hasImage())
            copy->setImageData(clipboard()->image());
    } else if (imageCopy == DecodedImage) {
        copy->setImageData(QImage::fromData(copy->data(imageFormat)));
    }
    return copy;
}

QMimeData *copyOf(const QMimeData &data)
{
    auto *copy = new QMimeData;
    for (const QString &format : data.formats())
        copy->setData(format, data.data(format));
    if (data.hasImage())
        copy->setImageData(data.imageData());
    return copy;
}

void setClipboardText(const QString &text)
{
    placeOwnText(text, QClipboard::Clipboard);
}

void paste()
{
    const Qt::KeyboardModifiers held = Platform::desktop()->heldModifiers();
    sendModifiers(held, false);
    // The user may still hold the global shortcut: give the keys back as they were.
    QTimer::singleShot(100, QCoreApplication::instance(), [held] { sendModifiers(held, true); });
    tapPasteKey(pasteKeyHere());
}

void pastePlainText()
{
    QMimeData *saved = saveClipboard();
    setClipboardText(clipboard()->text());
    paste();
    restoreClipboardLater(saved);
}

void pasteInstead(const QString &text, const std::function<void()> &sendKeys)
{
    QMimeData *saved = saveClipboard();
    setClipboardText(text);
    sendKeys();
    restoreClipboardLater(saved);
}

void moveCursorLater(CursorSteps steps)
{
    if (steps.first != -1)
        QTimer::singleShot(100, QCoreApplication::instance(), [steps] { moveCursor(steps); });
}

void pasteForShortcut(const QString &shortcut)
{
    const QKeySequence sequence = QKeySequence::fromString(shortcut);
    if (!sequence.isEmpty())
        sendModifiers(sequence[0].keyboardModifiers(), false);
    paste();
}

void pasteTextForShortcut(const QString &text, const QString &shortcut)
{
    pasteInstead(text, [&shortcut] { pasteForShortcut(shortcut); });
}

void delayedPaste()
{
    if (!takeDelayedPaste())
        return;
    QTimer::singleShot(200, QCoreApplication::instance(), [] {
        paste();
        delayedPastePending = false;
    });
}

void delayedPasteWithCursor(CursorSteps steps)
{
    if (!takeDelayedPaste())
        return;
    QTimer::singleShot(200, QCoreApplication::instance(), [steps] {
        paste();
        delayedPastePending = false;
        moveCursorLater(steps);
    });
}

void moveCursor(CursorSteps steps)
{
    if (steps.first == -1)
        return;
    for (int i = 0; i < steps.first; ++i)
        KeySender::tapKey(VirtualKey::Left, 0);
    for (int i = 0; i < steps.second; ++i)
        KeySender::tapKey(VirtualKey::Left, KeyModifier::Shift);
}

void putClippingText(const QModelIndex &clipping, int mode)
{
    auto *data = new QMimeData;
    ClipboardMarks::setOwner(data, clipping.data(Clipping::ApplicationRole).toString());
    data->setText(clipping.data(Clipping::TextRole).toString());
    const QString html = clipping.data(Clipping::HtmlRole).toString();
    // An empty HTML part would win over the text in rich editors and paste nothing.
    // As it was copied: "Clear style" is there for a clipping that should lose its styling.
    if (mode != PlainText && !html.isEmpty())
        data->setHtml(html);
    clipboard()->setMimeData(data, QClipboard::Clipboard);
}

void putClippingImage(const QModelIndex &clipping, bool asFile)
{
    const QString path = Clipping::imageFile(clipping.data(Clipping::IdRole).toUuid(),
                                             clipping.data(Clipping::FilenameRole).toString());
    auto *data = new QMimeData;
    ClipboardMarks::setOwner(data, clipping.data(Clipping::ApplicationRole).toString());
    if (asFile) {
        data->setUrls({QUrl::fromLocalFile(path)});
    } else {
        const QImage image(path);
        if (image.isNull())
            qWarning().noquote() << "Unable to add file as image to clipboard" << path;
        else
            data->setImageData(image);
    }
    clipboard()->setMimeData(data, QClipboard::Clipboard);
}

} // namespace ClipboardOps
