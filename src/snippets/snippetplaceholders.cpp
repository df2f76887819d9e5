#include "snippets/snippetplaceholders.h"

#include "actions/actionapi.h"
#include "actions/actionfiles.h"

#include <QCoreApplication>
#include <QDebug>
#include <QRegularExpression>

namespace SnippetPlaceholders {

QString resolve(const QString &text, const QString &application, const QStringList &clippings,
                QStringList *failures)
{
    static const QRegularExpression placeholder(QStringLiteral("({.+?})"));
    QString result;
    qsizetype done = 0;
    QRegularExpressionMatchIterator matches = placeholder.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result += QStringView(text).mid(done, match.capturedStart() - done);
        const QString found = match.captured();
        result += found.startsWith(QLatin1String("{CLIP"))
                      ? resolveClip(found, clippings)
                      : resolveAction(found, application, clippings, failures);
        done = match.capturedEnd();
    }
    result += QStringView(text).mid(done);
    return result;
}

QString resolveClip(const QString &placeholder, const QStringList &clippings)
{
    if (placeholder == QLatin1String("{CLIP}"))
        return clippings.isEmpty() ? placeholder : clippings.first();
    // "{CLIP:" and "}" cut off; anything else after "{CLIP" is read the same way.
    const QString inner = placeholder.mid(6).chopped(1);
    if (inner.isEmpty())
        return placeholder;
    bool isNumber = false;
    const int position = inner.toInt(&isNumber, 10);
    if (isNumber && position >= 1)
        return position > clippings.size() ? placeholder : clippings.at(position - 1);
    // An invalid expression matches nothing, so the placeholder stays.
    const QRegularExpression expression(inner);
    if (!expression.isValid())
        return placeholder;
    for (const QString &clipping : clippings) {
        if (expression.match(clipping).hasMatch())
            return clipping;
    }
    return placeholder;
}

QString resolveAction(const QString &placeholder, const QString &application,
                      const QStringList &clippings, QStringList *failures)
{
    const QString name = placeholder.mid(1).chopped(1);
    for (const auto &[path, title] : ActionFiles::listedActionTitles()) {
        const QString translated =
            QCoreApplication::translate("ActionList", title.toUtf8().constData());
        if (title != name && translated != name)
            continue;
        QString error;
        // The action works on the newest clipping, as a run from the menu would.
        const QStringList result =
            ActionAPI::runActionFile(path, clippings.value(0), application, error);
        qDebug() << "Executed" << result;
        if (!error.isEmpty() && failures) {
            failures->append(
                QCoreApplication::translate("SnippetPlaceholders", "Failed to run action '%1'\n%2")
                    .arg(name, error));
        }
        return result.join(QLatin1Char('\n'));
    }
    return placeholder;
}

} // namespace SnippetPlaceholders
