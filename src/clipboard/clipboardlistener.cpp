#include "clipboard/clipboardlistener.h"

#include "clipboard/clipboardmarks.h"
#include "clipboard/clipboardops.h"
#include "clipboard/htmlcleanup.h"
#include "history/applicationrules.h"
#include "history/decodeimage.h"
#include "platform/platform.h"

#include <QDebug>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>

#include <algorithm>

namespace {

QClipboard *clipboard()
{
    return QGuiApplication::clipboard();
}

// The format that holds the copy's image still encoded, when there is one.
QString encodedImageFormat(const QMimeData &data)
{
    const QStringList formats = data.formats();
    for (const QString &format : formats) {
        if (format.startsWith(QLatin1String("image/")))
            return format;
    }
    return QString();
}

} // namespace

ClipboardListener::ClipboardListener(QObject *parent) : QObject(parent)
{
    connect(clipboard(), &QClipboard::changed, this, &ClipboardListener::changedSlot);
    reloadSettings();
}

ClipboardListener::~ClipboardListener() = default;

void ClipboardListener::reloadSettings()
{
    m_textOnly = ApplicationRules::names(ApplicationRules::TextOnly);
    m_formattingOnly = ApplicationRules::names(ApplicationRules::FormattingOnly);
    m_noImages = ApplicationRules::names(ApplicationRules::NoImages);
}

QString ClipboardListener::signature(const QMimeData &data)
{
    // Qt also offers the URLs as text; only text of its own counts here.
    const QStringList formats = data.formats();
    const bool hasText = std::any_of(formats.begin(), formats.end(), [](const QString &format) {
        return format.startsWith(QLatin1String("text/plain"));
    });
    const QString text = hasText ? data.text() : QString();
    if (!text.isEmpty())
        return text;
    if (data.hasUrls()) {
        QStringList paths;
        const QList<QUrl> urls = data.urls();
        for (const QUrl &url : urls) {
            if (!url.isEmpty())
                paths.append(url.path());
        }
        return paths.join(QLatin1Char('\n'));
    }
    if (data.hasImage()) {
        QImage image = qvariant_cast<QImage>(data.imageData());
        if (image.isNull())
            image = clipboard()->image();
        if (image.isNull())
            return QString();
        return QStringLiteral("%1x%2-%3")
            .arg(image.width())
            .arg(image.height())
            .arg(image.pixel(image.width() / 2, image.height() / 2));
    }
    return QString();
}

void ClipboardListener::changedSlot(QClipboard::Mode mode)
{
    // The X11 selection follows every text the user selects; only copies count.
    if (mode == QClipboard::Clipboard)
        check();
}

void ClipboardListener::check()
{
    const quint64 changeCount = Platform::clipboardChangeCount();
    const QMimeData *current = clipboard()->mimeData(QClipboard::Clipboard);
    if (!current || current->formats().isEmpty())
        return;
    if (ClipboardMarks::isPrivate(*current)) {
        qDebug() << "Skipped clipboard content that its owner marked as private";
        return;
    }
    if (!ClipboardMarks::owner(*current).isNull()) {
        // The program's own write (a clipping pasted, an expansion, a rule's rewrite) is no
        // new copy: recorded again, a pasted image would come back under a new id and push
        // older clippings out. The last signature stays, so that the user's content put back
        // after a paste is no new copy either.
        qDebug() << "Skipped the program's own clipboard content";
        return;
    }
    const QString foreground = Platform::foregroundApplicationName();
    const QString application = foreground;
    Capture capture;
    // A rule's rewrite is recorded as it goes onto the clipboard.
    if (rewrite(*current, application))
        capture.data.reset(ClipboardOps::copyOf(*m_rewrite));
    else
        capture.data.reset(ClipboardOps::copyOfClipboard(ClipboardOps::EncodedImageOnly));
    if (Platform::clipboardChangeCount() != changeCount) {
        // Parts of two contents would make one clipping; the newer one reports itself next.
        qDebug() << "The clipboard changed while it was read; waiting for its next change";
        return;
    }
    capture.application = application;
    capture.icon = iconFor(application, foreground);
    capture.serial = m_nextSerial++;
    queueImage(capture);
    m_pending.push_back(std::move(capture));
    deliverReady();
}

bool ClipboardListener::rewrite(const QMimeData &current, const QString &application)
{
    const bool hasHtml = current.hasHtml();
    const bool formattingOnly = hasHtml && m_formattingOnly.contains(application);
    const bool textOnly = hasHtml && m_textOnly.contains(application);
    const bool noImages = current.hasImage() && m_noImages.contains(application);
    if (!formattingOnly && !textOnly && !noImages)
        return false;

    QString html = current.html();
    if (formattingOnly)
        html = HtmlCleanup::clearStyle(html);
    if (textOnly)
        html.clear();
    m_rewrite = std::make_unique<QMimeData>();
    const QString text = current.text();
    if (!text.isEmpty())
        m_rewrite->setText(text);
    // An empty HTML part would win over the text in rich editors and paste nothing.
    if (!html.isEmpty())
        m_rewrite->setHtml(html);
    ClipboardMarks::setOwner(m_rewrite.get(), application);
    // Not while the clipboard is delivering its change.
    QTimer::singleShot(0, this, &ClipboardListener::applyRewrite);
    return true;
}

void ClipboardListener::applyRewrite()
{
    if (m_rewrite)
        clipboard()->setMimeData(m_rewrite.release(), QClipboard::Clipboard);
}

QPixmap ClipboardListener::iconFor(const QString &application, const QString &foreground)
{
    // A window icon is a large property on X11; applications rarely change theirs.
    QPixmap icon = m_icons.value(application);
    if (!icon.isNull())
        return icon;
    const bool inFront =
        application == (foreground.isNull() ? Platform::foregroundApplicationName() : foreground);
    if (inFront) {
        icon = Platform::foregroundApplicationIcon();
        m_icons.insert(application, icon);
    }
    return icon;
}

void ClipboardListener::queueImage(Capture &capture)
{
    if (encodedImageFormat(*capture.data).isEmpty())
        return;
    const auto waiting = std::find_if(m_pending.begin(), m_pending.end(), [](const Capture &c) {
        return c.stage == Capture::Stage::Waiting;
    });
    if (waiting != m_pending.end()) {
        qDebug() << "Dropped a copied image that was still waiting to be decoded; a newer one "
                    "came";
        m_pending.erase(waiting);
    }
    const bool busy = std::any_of(m_pending.begin(), m_pending.end(), [](const Capture &c) {
        return c.stage == Capture::Stage::Decoding;
    });
    if (busy)
        capture.stage = Capture::Stage::Waiting;
    else
        startDecoding(capture);
}

void ClipboardListener::startDecoding(Capture &capture)
{
    const QString format = encodedImageFormat(*capture.data);
    capture.stage = Capture::Stage::Decoding;
    // The cache keeps PNG and JPEG as they came; anything else is stored as PNG.
    const bool keptAsItCame =
        format == QLatin1String("image/png") || format == QLatin1String("image/jpeg");
    auto *task = new DecodeImage(capture.serial, capture.data->data(format), !keptAsItCame);
    if (!keptAsItCame)
        capture.data->removeFormat(format);
    connect(task, &DecodeImage::decoded, this, &ClipboardListener::onDecoded, Qt::QueuedConnection);
    QThreadPool::globalInstance()->start(task);
}

void ClipboardListener::onDecoded(quint64 serial, const QImage &image, const QByteArray &png)
{
    for (Capture &capture : m_pending) {
        if (capture.serial != serial)
            continue;
        capture.stage = Capture::Stage::Ready;
        if (image.isNull()) {
            // Reported without the image: as its text, or as unknown content.
            qDebug() << "The copied image could not be decoded";
            capture.data->removeFormat(encodedImageFormat(*capture.data));
        } else {
            capture.data->setImageData(image);
            if (!png.isEmpty())
                capture.data->setData(QStringLiteral("image/png"), png);
        }
        break;
    }
    for (Capture &capture : m_pending) {
        if (capture.stage == Capture::Stage::Waiting) {
            startDecoding(capture);
            break;
        }
    }
    deliverReady();
}

void ClipboardListener::deliverReady()
{
    while (!m_pending.empty() && m_pending.front().stage == Capture::Stage::Ready) {
        Capture capture = std::move(m_pending.front());
        m_pending.pop_front();
        deliver(capture);
    }
}

void ClipboardListener::deliver(Capture &capture)
{
    const QString signature = ClipboardListener::signature(*capture.data);
    if (signature == m_lastSignature)
        return;
    m_lastSignature = signature;
    qDebug() << "New clipboard content from" << capture.application;
    emit changed(capture.data.release(), capture.icon, capture.application);
}
