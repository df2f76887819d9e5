#include "ui/clipboardmonitor.h"

#include "clipboard/clipboardmarks.h"
#include "platform/idesktop.h"
#include "platform/platform.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

// Previews show the start of large content; the size column tells the rest.
constexpr qsizetype PreviewBytes = 64 * 1024;

} // namespace

ClipboardMonitor::ClipboardMonitor(QWidget *parent)
    : QWidget(parent, Qt::Window), m_formats(new QTreeWidget(this)),
      m_preview(new QStackedWidget(this)), m_text(new QPlainTextEdit(this)),
      m_image(new QLabel(this)), m_source(new QLabel(this)), m_marks(new QLabel(this)),
      m_hidden(new QWidget(this))
{
    setWindowTitle(tr("Clipboard monitor"));
    setObjectName(QStringLiteral("clipboardMonitor"));
    m_formats->setHeaderLabels({tr("Format"), tr("Size (bytes)")});
    m_formats->setRootIsDecorated(false);
    m_formats->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_formats->setAccessibleName(tr("Clipboard formats"));
    m_text->setReadOnly(true);
    m_text->setObjectName(QStringLiteral("monitorText"));
    m_image->setAlignment(Qt::AlignCenter);
    m_image->setObjectName(QStringLiteral("monitorImage"));
    auto *imageArea = new QScrollArea(this);
    imageArea->setWidget(m_image);
    imageArea->setWidgetResizable(true);
    m_preview->addWidget(m_text);
    m_preview->addWidget(imageArea);
    // A password on screen is seen by whoever stands behind the user.
    auto *hiddenText = new QLabel(tr("Marked private: the content is hidden."), m_hidden);
    auto *reveal = new QPushButton(tr("Show the content"), m_hidden);
    reveal->setObjectName(QStringLiteral("revealButton"));
    auto *hiddenLayout = new QVBoxLayout(m_hidden);
    hiddenLayout->addStretch(1);
    hiddenLayout->addWidget(hiddenText, 0, Qt::AlignCenter);
    hiddenLayout->addWidget(reveal, 0, Qt::AlignCenter);
    hiddenLayout->addStretch(1);
    m_preview->addWidget(m_hidden);
    connect(reveal, &QPushButton::clicked, this, [this] {
        m_revealed = true;
        showPreview(m_formats->currentItem());
    });
    m_source->setObjectName(QStringLiteral("monitorSource"));
    m_marks->setObjectName(QStringLiteral("monitorMarks"));
    m_marks->setWordWrap(true);
    for (QLabel *label : {m_source, m_marks})
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto *splitter = new QSplitter(Qt::Vertical, this);
    splitter->addWidget(m_formats);
    splitter->addWidget(m_preview);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_source);
    layout->addWidget(m_marks);
    layout->addWidget(splitter, 1);
    resize(560, 520);

    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            &ClipboardMonitor::onClipboardChanged);
    connect(m_formats, &QTreeWidget::currentItemChanged, this,
            [this](const QTreeWidgetItem *row) { showPreview(row); });
}

void ClipboardMonitor::refresh()
{
    m_formats->clear();
    m_text->clear();
    m_image->clear();
    m_source->setText(
        tr("Owned by: %1").arg(m_application.isEmpty() ? tr("unknown") : m_application));
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!data) {
        m_marks->setText(tr("The clipboard is empty."));
        return;
    }
    m_marks->setText(marksText(*data));
    for (const QString &format : data->formats()) {
        auto *row = new QTreeWidgetItem(m_formats);
        row->setText(0, format);
        row->setText(1, QString::number(data->data(format).size()));
        row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    }
    const auto first = m_formats->findItems(formatToShowFirst(data->formats()), Qt::MatchExactly);
    if (!first.isEmpty())
        m_formats->setCurrentItem(first.first());
}

QString ClipboardMonitor::formatToShowFirst(const QStringList &formats)
{
    // What a person reads: the text, else the image, else whatever is there.
    for (const char *prefix : {"text/plain", "text/", "image/"}) {
        for (const QString &format : formats) {
            if (format.startsWith(QLatin1String(prefix)))
                return format;
        }
    }
    return formats.value(0);
}

QString ClipboardMonitor::marksText(const QMimeData &data)
{
    QStringList lines;
    if (ClipboardMarks::isPrivate(data))
        lines.append(tr("Marked private by the program that copied it: Velmorin does not "
                        "record it."));
    const QString owner = ClipboardMarks::owner(data);
    if (!owner.isNull())
        lines.append(tr("Put there by Velmorin (for %1): not recorded again.")
                         .arg(owner.isEmpty() ? tr("no application") : owner));
    if (lines.isEmpty())
        lines.append(tr("No marks: Velmorin records it unless a rule for the application says "
                        "otherwise."));
    return lines.join(QLatin1Char('\n'));
}

void ClipboardMonitor::showPreview(const QTreeWidgetItem *row)
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!row || !data)
        return;
    if (ClipboardMarks::isPrivate(*data) && !m_revealed) {
        m_preview->setCurrentWidget(m_hidden);
        return;
    }
    const QString format = row->text(0);
    const QByteArray bytes = data->data(format);
    if (format.startsWith(QLatin1String("image/")) ||
        format == QLatin1String("application/x-qt-image")) {
        QImage image = QImage::fromData(bytes);
        if (image.isNull())
            image = qvariant_cast<QImage>(data->imageData());
        m_image->setPixmap(QPixmap::fromImage(image));
        if (image.isNull())
            m_image->setText(tr("This image cannot be shown."));
        m_preview->setCurrentIndex(1);
        return;
    }
    const bool text = format.startsWith(QLatin1String("text/")) ||
                      format.contains(QLatin1String("json")) ||
                      format.contains(QLatin1String("xml"));
    m_text->setPlainText(text ? QString::fromUtf8(bytes.left(PreviewBytes))
                              : QString::fromLatin1(bytes.left(PreviewBytes / 4).toHex(' ')));
    m_preview->setCurrentIndex(0);
}

void ClipboardMonitor::showEvent(QShowEvent *event)
{
    refresh();
    QWidget::showEvent(event);
}

void ClipboardMonitor::onClipboardChanged()
{
    // The owner, when the system tells it: a program may copy while another is in front.
    m_application = Platform::desktop()->clipboardOwnerName();
    if (m_application.isEmpty())
        m_application = Platform::foregroundApplicationName();
    m_revealed = false;
    // Reading every format costs; nobody looks while the window is closed.
    if (isVisible())
        refresh();
}
