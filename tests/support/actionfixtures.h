#pragma once

#include <QJsonObject>
#include <QString>

// Action files for tests: built-in paths by file name, and user actions written in place.
namespace ActionFixtures {

QString builtIn(const char *fileName);
// Writes the action into the user actions folder; returns its path, or an empty string.
QString writeUserAction(const QString &fileName, const QJsonObject &action);

} // namespace ActionFixtures
