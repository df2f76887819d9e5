#include "ui/actions/editorcolorscheme.h"

#include <Qsci/qscilexer.h>
#include <Qsci/qsciscintilla.h>

#include <QColor>
#include <QDebug>
#include <QFile>
#include <QFont>
#include <QHash>
#include <QXmlStreamReader>

namespace {

// Style numbers by the lexer's description of them.
QHash<QString, int> stylesByName(const QsciLexer *lexer)
{
    QHash<QString, int> styles;
    for (int style = 0; style < 128; ++style) {
        const QString name = lexer->description(style);
        if (!name.isEmpty())
            styles.insert(name, style);
    }
    return styles;
}

void applyEditor(const QXmlStreamAttributes &attributes, QsciScintilla *editor)
{
    const auto color = [&attributes](const char *name) {
        return QColor(attributes.value(QLatin1String(name)).toString());
    };
    if (QsciLexer *lexer = editor->lexer()) {
        lexer->setDefaultPaper(color("paper"));
        lexer->setPaper(color("paper"), -1);
        lexer->setDefaultColor(color("foreground"));
    }
    editor->setPaper(color("paper"));
    editor->setColor(color("foreground"));
    editor->setCaretForegroundColor(color("caret"));
    editor->setSelectionBackgroundColor(color("selection"));
    editor->setCaretLineVisible(true);
    editor->setCaretLineBackgroundColor(color("current-line"));
    editor->setMarginsBackgroundColor(color("margin-paper"));
    editor->setMarginsForegroundColor(color("margin-foreground"));
    editor->setMatchedBraceForegroundColor(color("brace-match"));
    editor->setMatchedBraceBackgroundColor(color("current-line"));
}

void applyStyle(const QXmlStreamAttributes &attributes, QsciLexer *lexer,
                const QHash<QString, int> &styles)
{
    const int style = styles.value(attributes.value(QLatin1String("name")).toString(), -1);
    if (style < 0)
        return;
    if (attributes.hasAttribute(QLatin1String("foreground")))
        lexer->setColor(QColor(attributes.value(QLatin1String("foreground")).toString()), style);
    if (attributes.hasAttribute(QLatin1String("paper")))
        lexer->setPaper(QColor(attributes.value(QLatin1String("paper")).toString()), style);
    QFont font = lexer->font(style);
    font.setBold(attributes.value(QLatin1String("bold")) == QLatin1String("true"));
    font.setItalic(attributes.value(QLatin1String("italic")) == QLatin1String("true"));
    lexer->setFont(font, style);
}

} // namespace

bool EditorColorScheme::apply(const QString &path, QsciScintilla *editor)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning().noquote() << "Unable to read the editor colour scheme" << path;
        return false;
    }
    QsciLexer *lexer = editor->lexer();
    const QHash<QString, int> styles = lexer ? stylesByName(lexer) : QHash<QString, int>();
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("editor"))
            applyEditor(xml.attributes(), editor);
        else if (xml.name() == QLatin1String("style") && lexer)
            applyStyle(xml.attributes(), lexer, styles);
    }
    if (xml.hasError()) {
        qWarning().noquote() << "The editor colour scheme" << path
                             << "is not valid XML:" << xml.errorString();
        return false;
    }
    return true;
}
