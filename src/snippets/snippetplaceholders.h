#pragma once

#include <QString>
#include <QStringList>

// Placeholders in a snippet's text, replaced when it is pasted: "{CLIP}" and "{CLIP:n}" take a
// clipping by position, "{CLIP:expression}" the first clipping the expression matches, and any
// other braced name runs the action of that name. What cannot be resolved stays as written.
namespace SnippetPlaceholders {

// clippings: the history's texts, newest first. A failed action run adds its message to
// failures (when given), for the caller to show; its text is then what the run returned.
QString resolve(const QString &text, const QString &application, const QStringList &clippings,
                QStringList *failures = nullptr);
QString resolveClip(const QString &placeholder, const QStringList &clippings);
QString resolveAction(const QString &placeholder, const QString &application,
                      const QStringList &clippings, QStringList *failures = nullptr);

} // namespace SnippetPlaceholders
