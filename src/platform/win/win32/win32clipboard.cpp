#include "win32clipboard.h"

DWORD Win32Clipboard::sequenceNumber()
{
    return GetClipboardSequenceNumber();
}
