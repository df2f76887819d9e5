#pragma once

#include <QString>

class QMimeData;

// What clipboard content says about itself besides its data: which program of ours put it
// there (the owner marker), and whether its owner asked clipboard histories to leave it alone
// (passwords, one-off pastes).
namespace ClipboardMarks {

// The format of the owner marker; its bytes are the UTF-8 name of the application the content
// is attributed to.
QString ownerFormat();
void setOwner(QMimeData *data, const QString &application);
// Null when the content has no marker; empty when it names no application.
QString owner(const QMimeData &data);

enum class System { Windows, X11 };
constexpr System currentSystem =
#ifdef Q_OS_WIN
    System::Windows;
#else
    System::X11;
#endif

// True for content that must not be recorded nor rewritten. Reads only the small marker
// formats, never the content itself.
bool isPrivate(const QMimeData &data);
// Adds the marks that the clipboard histories of the system honour.
void markPrivate(QMimeData *data, System system = currentSystem);

} // namespace ClipboardMarks
