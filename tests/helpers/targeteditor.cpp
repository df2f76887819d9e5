// The application the desktop tests type and paste into: a plain text editor window that
// answers on standard output, one line per command read from standard input:
//   state  -> STATE {"text": ..., "position": caret, "anchor": selection start}
//   clear  -> CLEARED
// It says READY once its window is shown.
#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
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
        char buffer[256];
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
            }
        }
    });

    editor.show();
    editor.activateWindow();
    QTimer::singleShot(0, &editor, [] { answer("READY"); });
    return application.exec();
}
