#pragma once

#include <QString>

class QsciScintilla;

// A colour scheme for the code editor, read from an XML file: the editor's own colours and
// one entry per lexer style, named as the lexer describes the style.
class EditorColorScheme final
{
public:
    // Applies the scheme to the editor and its lexer; false when the file cannot be read.
    static bool apply(const QString &path, QsciScintilla *editor);
};
