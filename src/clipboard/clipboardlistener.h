#pragma once

#include <QClipboard>
#include <QHash>
#include <QMimeData>
#include <QObject>
#include <QPixmap>
#include <QSet>
#include <QString>

#include <deque>
#include <memory>

// Watches the clipboard and reports each new content once, as a private copy, with the
// application that put it there. Applications with clipboard rules have their copies rewritten
// on the clipboard first (so that the rule holds for their pastes too); the rewritten content
// comes back marked and is reported then. Content marked private by its owner is ignored.
class ClipboardListener final : public QObject
{
    Q_OBJECT

public:
    explicit ClipboardListener(QObject *parent = nullptr);
    ~ClipboardListener() override;

    // What tells one content from the next: its text, else its file paths, else the image's
    // size and centre pixel.
    static QString signature(const QMimeData &data);

public slots:
    void changedSlot(QClipboard::Mode mode);
    void check();
    // Reads the rules and limits again.
    void reloadSettings();

signals:
    // data is the receiver's to delete.
    void changed(QMimeData *data, const QPixmap &icon, const QString &application);

private:
    // One change on its way out. Changes leave in the order they came, so a later copy waits
    // for an image before it that is still being decoded. One image is decoded at a time and
    // at most one more waits for its turn: a newer copied image takes the waiting one's place,
    // so that a flood of images neither holds them all in memory nor delays the texts behind.
    struct Capture
    {
        enum class Stage { Ready, Waiting, Decoding };
        std::unique_ptr<QMimeData> data;
        QPixmap icon;
        QString application;
        quint64 serial = 0;
        Stage stage = Stage::Ready;
    };

    bool rewrite(const QMimeData &current, const QString &application);
    void applyRewrite();
    QPixmap iconFor(const QString &application, const QString &foreground);
    void queueImage(Capture &capture);
    void startDecoding(Capture &capture);
    void onDecoded(quint64 serial, const QImage &image, const QByteArray &png);
    void deliverReady();
    void deliver(Capture &capture);

    QSet<QString> m_textOnly;
    QSet<QString> m_formattingOnly;
    QSet<QString> m_noImages;
    QString m_lastSignature;
    QHash<QString, QPixmap> m_icons;
    std::unique_ptr<QMimeData> m_rewrite;
    std::deque<Capture> m_pending;
    quint64 m_nextSerial = 1;
};
