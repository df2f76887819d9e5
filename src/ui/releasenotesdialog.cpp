#include "ui/releasenotesdialog.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QLocale>
#include <QTextBrowser>
#include <QVBoxLayout>

ReleaseNotesDialog::ReleaseNotesDialog(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(tr("What's new in Velmorin"));
    setObjectName(QStringLiteral("releaseNotesDialog"));

    auto *browser = new QTextBrowser(this);
    browser->setOpenExternalLinks(true);
    browser->setMarkdown(notes());

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(browser);
    layout->addWidget(buttons);
    resize(520, 420);
}

QString ReleaseNotesDialog::notes()
{
    // In the language of the user interface when there is a translation of them.
    QFile file(QStringLiteral(":/data/release-notes.%1.md").arg(QLocale().name().left(2)));
    if (!file.exists())
        file.setFileName(QStringLiteral(":/data/release-notes.md"));
    if (!file.open(QIODevice::ReadOnly))
        return tr("The release notes are missing from this build.");
    return QString::fromUtf8(file.readAll());
}
