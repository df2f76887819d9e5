#pragma once

#include <QWidget>

class FramelessHelper;
class QPlainTextEdit;

// A small window to change a clipping's text before pasting it. Saving adds the text as the
// newest copy; the clipping as it was copied stays in the history.
class ClippingEditor final : public QWidget
{
    Q_OBJECT

public:
    explicit ClippingEditor(QWidget *parent = nullptr);

    void edit(const QString &text);
    QString text() const;
    FramelessHelper *framelessHelper() const { return m_helper; }

signals:
    void saved(const QString &text);

private:
    void save();

    QPlainTextEdit *m_text;
    FramelessHelper *m_helper;
};
