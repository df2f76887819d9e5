#include "htmlcleanup.h"

#include <QRegularExpression>

namespace HtmlCleanup {

QString clean(const QString &html)
{
    static const QRegularExpression tag(QStringLiteral("<[^<>]+>"));
    static const QRegularExpression attributes(
        QStringLiteral(R"(\s(?:id|style)\s*=\s*(?:"[^"]*"|'[^']*'|[^\s>]+))"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression heading(QStringLiteral(R"(^<\s*/?\s*h[1-6](?:\s[^>]*)?>$)"),
                                            QRegularExpression::CaseInsensitiveOption);
    // Only inside tags: the same words in the text are the user's.
    QString cleaned;
    cleaned.reserve(html.size());
    qsizetype copied = 0;
    for (auto it = tag.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        cleaned += QStringView(html).mid(copied, match.capturedStart() - copied);
        QString element = match.captured();
        if (!heading.match(element).hasMatch())
            cleaned += element.remove(attributes);
        copied = match.capturedEnd();
    }
    cleaned += QStringView(html).mid(copied);
    return cleaned;
}

} // namespace HtmlCleanup
