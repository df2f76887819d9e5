#include "actionfixtures.h"

#include "actions/actionfiles.h"

#include <QDir>

namespace ActionFixtures {

QString builtIn(const char *fileName)
{
    return ActionFiles::builtInFolder() + QLatin1Char('/') + QLatin1String(fileName);
}

QString writeUserAction(const QString &fileName, const QJsonObject &action)
{
    QDir().mkpath(ActionFiles::userFolder());
    const QString path = ActionFiles::userFolder() + QLatin1Char('/') + fileName;
    return ActionFiles::writeAction(path, action) ? path : QString();
}

} // namespace ActionFixtures
