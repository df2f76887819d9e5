#include "platform/pastekeys.h"

#include <QStringList>

namespace {

// Window classes of the common terminal emulators: X11 class names first, then Win32 ones
// (the console host, Windows Terminal, mintty, PuTTY and its forks, ConEmu).
const QStringList &terminalClasses()
{
    static const QStringList classes{
        QStringLiteral("XTerm"),
        QStringLiteral("UXTerm"),
        QStringLiteral("URxvt"),
        QStringLiteral("Rxvt"),
        QStringLiteral("Xfce4-terminal"),
        QStringLiteral("Gnome-terminal"),
        QStringLiteral("kgx"),
        QStringLiteral("org.gnome.Console"),
        QStringLiteral("konsole"),
        QStringLiteral("Mate-terminal"),
        QStringLiteral("Lxterminal"),
        QStringLiteral("qterminal"),
        QStringLiteral("Terminator"),
        QStringLiteral("Tilix"),
        QStringLiteral("Guake"),
        QStringLiteral("Tilda"),
        QStringLiteral("Sakura"),
        QStringLiteral("Terminology"),
        QStringLiteral("kitty"),
        QStringLiteral("Alacritty"),
        QStringLiteral("foot"),
        QStringLiteral("st-256color"),
        QStringLiteral("org.wezfurlong.wezterm"),
        QStringLiteral("ConsoleWindowClass"),
        QStringLiteral("CASCADIA_HOSTING_WINDOW_CLASS"),
        QStringLiteral("mintty"),
        QStringLiteral("PuTTY"),
        QStringLiteral("KiTTY"),
        QStringLiteral("VirtualConsoleClass"),
    };
    return classes;
}

constexpr struct
{
    PasteKeys::Key key;
    const char *name;
} names[] = {
    {PasteKeys::ControlV, "Ctrl+V"},
    {PasteKeys::ShiftInsert, "Shift+Insert"},
    {PasteKeys::ControlShiftV, "Ctrl+Shift+V"},
};

} // namespace

namespace PasteKeys {

bool isTerminal(const QString &windowClass)
{
    return !windowClass.isEmpty() && terminalClasses().contains(windowClass, Qt::CaseInsensitive);
}

Key resolve(Key chosen, const QString &windowClass)
{
    if (chosen != Automatic)
        return chosen;
    return isTerminal(windowClass) ? ShiftInsert : ControlV;
}

QString name(Key key)
{
    for (const auto &entry : names) {
        if (entry.key == key)
            return QLatin1String(entry.name);
    }
    return QString();
}

Key fromName(const QString &name)
{
    for (const auto &entry : names) {
        if (name.compare(QLatin1String(entry.name), Qt::CaseInsensitive) == 0)
            return entry.key;
    }
    return Automatic;
}

} // namespace PasteKeys
