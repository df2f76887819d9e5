#pragma once

#include <QWidget>

class QLabel;
class QMimeData;
class QPlainTextEdit;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

// A diagnostic window for "why was this not recorded?": the formats on the clipboard with
// their sizes and a preview of the chosen one (text, HTML source, image), the application that
// owns the content, and the marks that decide whether Velmorin records it. It opens on the
// text, keeps content marked private hidden until asked, and follows every clipboard change
// while it is open.
class ClipboardMonitor final : public QWidget
{
    Q_OBJECT

public:
    explicit ClipboardMonitor(QWidget *parent = nullptr);

    void refresh();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void onClipboardChanged();
    void showPreview(const QTreeWidgetItem *row);
    static QString marksText(const QMimeData &data);
    static QString formatToShowFirst(const QStringList &formats);

    QTreeWidget *m_formats;
    QStackedWidget *m_preview;
    QPlainTextEdit *m_text;
    QLabel *m_image;
    QLabel *m_source;
    QLabel *m_marks;
    QWidget *m_hidden;
    QString m_application;
    bool m_revealed = false;
};
