#pragma once

#include <QString>

// HTML of a clipping made fit to paste elsewhere: element ids (they would clash with the
// target document's), heading tags (the text keeps its words, not the heading level) and
// inline styles are removed.
namespace HtmlCleanup {
QString clean(const QString &html);
}
