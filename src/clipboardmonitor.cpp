#include "clipboardmonitor.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMimeData>
#include <QTreeWidget>
#include <QVBoxLayout>

ClipboardMonitor::ClipboardMonitor(QWidget *parent)
    : QWidget(parent, Qt::Window), m_formats(new QTreeWidget(this))
{
    setWindowTitle(tr("Clipboard monitor"));
    m_formats->setHeaderLabels({tr("Format"), tr("Size (bytes)")});
    m_formats->setRootIsDecorated(false);
    m_formats->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_formats->setAccessibleName(tr("Clipboard formats"));

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_formats);
    resize(480, 320);

    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            &ClipboardMonitor::onClipboardChanged);
}

void ClipboardMonitor::refresh()
{
    m_formats->clear();
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    if (!data)
        return;
    for (const QString &format : data->formats()) {
        auto *row = new QTreeWidgetItem(m_formats);
        row->setText(0, format);
        row->setText(1, QString::number(data->data(format).size()));
        row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
    }
}

void ClipboardMonitor::showEvent(QShowEvent *event)
{
    refresh();
    QWidget::showEvent(event);
}

void ClipboardMonitor::onClipboardChanged()
{
    // Reading every format costs; nobody looks while the window is closed.
    if (isVisible())
        refresh();
}
