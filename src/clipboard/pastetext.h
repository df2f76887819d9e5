#pragma once

#include "clipboard/clipboardops.h"

#include <QString>
#include <QStringList>

// A text made for one paste (a snippet with its placeholders resolved): where the caret goes
// afterwards, and what failed on the way, for the user to hear of.
struct PasteText
{
    QString text;
    ClipboardOps::CursorSteps steps{-1, 0};
    QStringList failures;
};
