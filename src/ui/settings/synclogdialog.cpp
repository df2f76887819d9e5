#include "ui/settings/synclogdialog.h"

#include "synclog.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

SyncLogDialog::SyncLogDialog(QWidget *parent)
    : QDialog(parent), m_text(new QPlainTextEdit(this)), m_poll(new QTimer(this))
{
    setWindowTitle(tr("Sync log"));
    setObjectName(QStringLiteral("syncLogDialog"));
    m_text->setReadOnly(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // The log keeps its own limit; the view keeps as many lines.
    m_text->setMaximumBlockCount(5000);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *exportButton = buttons->addButton(tr("Export..."), QDialogButtonBox::ActionRole);
    QPushButton *clearButton = buttons->addButton(tr("Clear"), QDialogButtonBox::ResetRole);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(exportButton, &QPushButton::clicked, this, &SyncLogDialog::exportLog);
    connect(clearButton, &QPushButton::clicked, this, [this] {
        SyncLog::instance().clear();
        m_text->clear();
        m_cursor = SyncLog::instance().totalAppended();
    });

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    layout->addWidget(buttons);
    resize(760, 480);

    connect(m_poll, &QTimer::timeout, this, &SyncLogDialog::poll);
    m_poll->start(500);
    poll();
}

QString SyncLogDialog::defaultExportPath()
{
    return QDir::homePath() + QLatin1Char('/') + QStringLiteral("Synclog-") +
           QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-hhmmss")) +
           QStringLiteral(".txt");
}

void SyncLogDialog::poll()
{
    const QStringList lines = SyncLog::instance().linesSince(&m_cursor);
    if (!lines.isEmpty())
        m_text->appendPlainText(lines.join(QLatin1Char('\n')));
}

void SyncLogDialog::exportLog()
{
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Export the sync log"), defaultExportPath(), tr("Text files (*.txt)"));
    if (path.isEmpty())
        return;
    QString error;
    if (!SyncLog::instance().exportTo(path, &error))
        QMessageBox::warning(this, QStringLiteral("Velmorin"),
                             tr("Writing the sync log failed: ") + error);
}
