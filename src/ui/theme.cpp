#include "ui/theme.h"

#include "platform/platform.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QStyle>

namespace Theme {

bool isDark(int choice)
{
    if (choice == Light || choice == Dark)
        return choice == Dark;
    return Platform::isDarkTheme();
}

QPalette palette(bool dark)
{
    const QColor window = dark ? QColor(0x24, 0x27, 0x2e) : QColor(0xf6, 0xf7, 0xf9);
    const QColor base = dark ? QColor(0x1b, 0x1d, 0x22) : QColor(0xff, 0xff, 0xff);
    const QColor text = dark ? QColor(0xe4, 0xe6, 0xeb) : QColor(0x1f, 0x23, 0x29);
    const QColor accent = dark ? QColor(0x3d, 0x7a, 0xd6) : QColor(0x2f, 0x6f, 0xd0);
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, dark ? window.lighter(110) : window.darker(103));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, dark ? window.lighter(120) : window);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText,
                     dark ? QColor(0x8a, 0x90, 0x9a) : QColor(0x8a, 0x90, 0x9a));
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::Mid, dark ? window.lighter(140) : window.darker(120));
    palette.setColor(QPalette::Dark, dark ? window.darker(140) : window.darker(160));
    palette.setColor(QPalette::Light, dark ? window.lighter(160) : Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        QColor disabled = text;
        disabled.setAlphaF(0.45f);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    return palette;
}

void apply(int choice)
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(palette(isDark(choice)));
    QFile sheet(QStringLiteral(":/styles/base.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

} // namespace Theme
