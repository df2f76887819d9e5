#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// Where action files live, how they are named, read, ordered and deleted, and the listing the
// action menus read from the settings. A path that begins with ":" is a built-in action among
// the program's resources, which is never written.
namespace ActionFiles {

QString builtInFolder();
QString templatePath();
QString templateScript();
// The folder "actions" in the user's application data folder.
QString userFolder();
bool isBuiltIn(const QString &path);

// Built-ins first, then user actions; within each, paths compared case-sensitively.
bool comesBefore(const QString &a, const QString &b);
void sortPaths(QStringList &paths);

// Every action file of the folder, by path. A file that cannot be read or parsed is logged and
// stands as an action marked "unreadable", titled with its file name, that says why.
QMap<QString, QJsonObject> scanFolder(const QString &folder);
// The title as a file name: ASCII letters and digits only, each word capitalised after the
// first, made unique in the user folder.
QString newFilePath(const QString &title);
// Writes the object in compact form, replacing the file as a whole.
bool writeAction(const QString &path, const QJsonObject &action);
// Keeps the file as a tombstone, so that synchronisation carries the deletion elsewhere.
bool markDeleted(const QString &path);

// Parameter values typed for an action, by parameter name; kept in the settings, not the file.
QVariantMap parameterValues(const QString &path);
void setParameterValues(const QString &path, const QVariantMap &values);

// Every action of both folders that is not deleted, in order, with its file's content.
QList<QPair<QString, QJsonObject>> listedActions();
// Writes the listing (path and title of each action) that menus and shortcuts read.
void writeListing(const QList<QPair<QString, QJsonObject>> &actions);

// Path and title of every listed action, hidden ones included, in order.
QList<QPair<QString, QString>> listedActionTitles();
// The actions the menus offer: path and title of every listed action that is not hidden, in
// order.
QList<QPair<QString, QString>> menuEntries();

} // namespace ActionFiles
