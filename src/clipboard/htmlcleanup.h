#pragma once

#include <QString>

// HTML made fit for other documents. Both functions change tags only, never the text between
// them.
namespace HtmlCleanup {

// For pasting elsewhere: element ids (they would clash with the target document's), heading
// tags (the text keeps its words, not the heading level) and inline styles are removed.
QString clean(const QString &html);

// For applications whose copies should lose their look but keep their structure: ids and
// heading tags are removed, and inline styles lose colours, font sizes, font families and
// backgrounds while keeping the rest (bold, margins, alignment).
QString clearStyle(const QString &html);

} // namespace HtmlCleanup
