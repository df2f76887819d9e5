#include "ui/clippingeditor.h"

#include "ui/framelesshelper.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

ClippingEditor::ClippingEditor(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint), m_text(new QPlainTextEdit(this)),
      m_helper(new FramelessHelper(this))
{
    setObjectName(QStringLiteral("clippingEditor"));
    setWindowTitle(tr("Edit text"));
    auto *title = new QLabel(tr("Edit text"), this);
    title->setObjectName(QStringLiteral("windowTitle"));
    m_helper->addMoveHandle(title);
    m_text->setAccessibleName(tr("Text of the clipping"));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Save)->setToolTip(tr("Keep the text as the newest copy"));
    connect(buttons, &QDialogButtonBox::accepted, this, &ClippingEditor::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    auto *saveShortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return), this);
    connect(saveShortcut, &QShortcut::activated, this, &ClippingEditor::save);
    auto *closeShortcut = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(closeShortcut, &QShortcut::activated, this, &QWidget::close);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 8, 10, 10);
    layout->addWidget(title);
    layout->addWidget(m_text, 1);
    layout->addWidget(buttons);
    resize(420, 300);
}

void ClippingEditor::edit(const QString &text)
{
    m_text->setPlainText(text);
    m_text->selectAll();
    show();
    raise();
    activateWindow();
    m_text->setFocus();
}

QString ClippingEditor::text() const
{
    return m_text->toPlainText();
}

void ClippingEditor::save()
{
    emit saved(text());
    close();
}
