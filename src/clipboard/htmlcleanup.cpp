#include "clipboard/htmlcleanup.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace {

// Rewrites every tag of the HTML with edit; the text between tags is the user's and stays.
template <typename Edit> QString editTags(const QString &html, Edit edit)
{
    static const QRegularExpression tag(QStringLiteral("<[^<>]+>"));
    QString edited;
    edited.reserve(html.size());
    qsizetype copied = 0;
    for (auto it = tag.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        edited += QStringView(html).mid(copied, match.capturedStart() - copied);
        edited += edit(match.captured());
        copied = match.capturedEnd();
    }
    edited += QStringView(html).mid(copied);
    return edited;
}

QString keptDeclarations(QString style)
{
    static const QStringList dropped{QStringLiteral("color:"), QStringLiteral("font-size:"),
                                     QStringLiteral("font-family:"), QStringLiteral("background")};
    style.replace(QLatin1String("&quot;"), QLatin1String("'"));
    QStringList kept;
    for (const QString &declaration : style.split(QLatin1Char(';'))) {
        const QString trimmed = declaration.trimmed();
        const bool drop = std::any_of(dropped.begin(), dropped.end(), [&](const QString &name) {
            return trimmed.startsWith(name, Qt::CaseInsensitive);
        });
        if (!drop && !trimmed.isEmpty())
            kept.append(trimmed);
    }
    return kept.join(QLatin1Char(';'));
}

} // namespace

namespace HtmlCleanup {

QString clean(const QString &html)
{
    static const QRegularExpression attributes(
        QStringLiteral(R"(\s(?:id|style)\s*=\s*(?:"[^"]*"|'[^']*'|[^\s>]+))"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression heading(QStringLiteral(R"(^<\s*/?\s*h[1-6](?:\s[^>]*)?>$)"),
                                            QRegularExpression::CaseInsensitiveOption);
    return editTags(html, [](QString element) {
        return heading.match(element).hasMatch() ? QString() : element.remove(attributes);
    });
}

QString clearStyle(const QString &html)
{
    // Attributes follow white space, so that data-id and the like stay. A style ends at the
    // quote that opened it: Word quotes font names with the other kind inside.
    static const QRegularExpression id(QStringLiteral(R"(\s+id=['"].*?['"])"));
    static const QRegularExpression heading(QStringLiteral(R"(</?h\d.*?>)"));
    static const QRegularExpression style(QStringLiteral(R"((?<=\s)style=(['"])(.+?)\1)"));
    return editTags(html, [](QString element) {
        if (heading.match(element).hasMatch())
            return QString();
        element.remove(id);
        QString rewritten;
        qsizetype copied = 0;
        for (auto it = style.globalMatch(element); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            rewritten += QStringView(element).mid(copied, match.capturedStart() - copied);
            rewritten += QStringLiteral("style=\"%1\"").arg(keptDeclarations(match.captured(2)));
            copied = match.capturedEnd();
        }
        rewritten += QStringView(element).mid(copied);
        return rewritten;
    });
}

} // namespace HtmlCleanup
