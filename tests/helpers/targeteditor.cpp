// The application the desktop tests type and paste into: a plain text editor window that
// answers on standard output, one line per command read from standard input:
//   state  -> STATE {"text": ..., "position": caret, "anchor": selection start}
//   clear  -> CLEARED
//   copy-rich TEXT | copy-image W H | copy-long LENGTH | copy-files PATH[;PATH] |
//   copy-secret TEXT -> COPIED
//            (puts that content on the clipboard, as the application's own copy command would)
// It says READY once its window is shown.
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMimeData>
#include <QPainter>
#include <QPlainTextEdit>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <unistd.h>

namespace {

void answer(const QByteArray &line)
{
    std::fputs(line.constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

QIcon bigIcon()
{
    QImage image(256, 256, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setBrush(QColor(0x2e, 0x7d, 0x32));
    painter.drawEllipse(image.rect().adjusted(8, 8, -8, -8));
    return QIcon(QPixmap::fromImage(image));
}

QImage testImage(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient gradient(0, 0, width, height);
    gradient.setColorAt(0, QColor(0x1e, 0x88, 0xe5));
    gradient.setColorAt(1, QColor(0xff, 0xb3, 0x00));
    painter.fillRect(image.rect(), gradient);
    return image;
}

// The content of one copy command; null for a command that is not one.
QMimeData *contentFor(const QByteArray &command)
{
    const QList<QByteArray> words = command.split(' ');
    auto *data = new QMimeData;
    if (words.first() == "copy-rich") {
        const QString text = QString::fromUtf8(command.mid(command.indexOf(' ') + 1));
        data->setText(text);
        data->setHtml(QStringLiteral("<p style=\"color:#c00\"><b>%1</b></p>").arg(text));
    } else if (words.first() == "copy-image" && words.size() == 3) {
        data->setImageData(testImage(words.at(1).toInt(), words.at(2).toInt()));
    } else if (words.first() == "copy-files" && words.size() == 2) {
        QList<QUrl> urls;
        for (const QByteArray &path : words.at(1).split(';'))
            urls.append(QUrl::fromLocalFile(QString::fromUtf8(path)));
        data->setUrls(urls);
    } else if (words.first() == "copy-long" && words.size() == 2) {
        data->setText(QString(words.at(1).toInt(), QLatin1Char('x')));
    } else if (words.first() == "copy-secret") {
        data->setText(QString::fromUtf8(command.mid(command.indexOf(' ') + 1)));
        data->setData(QStringLiteral("x-kde-passwordManagerHint"), "secret");
    } else {
        delete data;
        return nullptr;
    }
    return data;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QPlainTextEdit editor;
    editor.setWindowTitle(QStringLiteral("Velmorin test target"));
    editor.setWindowIcon(bigIcon());
    editor.resize(480, 240);
    editor.move(40, 40);

    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &editor, [&] {
        char buffer[4096];
        const ssize_t length = ::read(STDIN_FILENO, buffer, sizeof(buffer));
        if (length <= 0) {
            QApplication::quit();
            return;
        }
        for (const QByteArray &command : QByteArray(buffer, int(length)).split('\n')) {
            if (command == "state") {
                const QTextCursor cursor = editor.textCursor();
                const QJsonObject state{{QStringLiteral("text"), editor.toPlainText()},
                                        {QStringLiteral("position"), cursor.position()},
                                        {QStringLiteral("anchor"), cursor.anchor()}};
                answer("STATE " + QJsonDocument(state).toJson(QJsonDocument::Compact));
            } else if (command == "clear") {
                editor.clear();
                answer("CLEARED");
            } else if (QMimeData *content = contentFor(command)) {
                QGuiApplication::clipboard()->setMimeData(content);
                answer("COPIED");
            }
        }
    });

    editor.show();
    editor.activateWindow();
    QTimer::singleShot(0, &editor, [] { answer("READY"); });
    return application.exec();
}
