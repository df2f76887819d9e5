#pragma once

#include <windows.h>

#include <cstdint>

// One observed input event, as the hooks hand it to the program.
struct Win32InputRecord
{
    enum Kind : std::uint8_t { Key, Button };
    Kind kind = Key;
    std::uint8_t length = 0; // UTF-16 units in text
    std::uint32_t virtualKey = 0;
    wchar_t text[10] = {};
};

// The low-level keyboard and mouse hooks. The callbacks run on the installing thread while it
// pumps messages and must answer fast, or Windows drops the hook: they only translate the key
// and put a record into a fixed ring, then post one message to a message-only window, whose
// procedure hands the records to the handler after the callback has returned. Nothing in the
// callbacks allocates, locks or does I/O.
class Win32InputHooks final
{
public:
    enum Hook { Keyboard, Mouse };
    using Handler = void (*)(const Win32InputRecord &record, void *context);
    using Translator = int(WINAPI *)(UINT virtualKey, UINT scanCode, const BYTE *state,
                                     LPWSTR buffer, int size, UINT flags);

    static bool install(Hook hook);
    // False when Windows refused; the hook is forgotten either way.
    static bool remove(Hook hook);
    static bool isInstalled(Hook hook);
    static void setHandler(Handler handler, void *context);

    // ToUnicode, or a stand-in for tests.
    static void setTranslator(Translator translator);
    // What a key types with the given key state, the dead-key rules applied: a dead key types
    // nothing and is put back into the layout once the next key has typed its text.
    static int translate(UINT virtualKey, UINT scanCode, const BYTE *state, wchar_t *text);
    // The twelve modifier and Caps Lock entries of the key state; the rest stays zero.
    static void readModifierState(BYTE *state);

    static LRESULT CALLBACK keyboardProc(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK mouseProc(int code, WPARAM wParam, LPARAM lParam);

    // Records dropped because the ring was full (the handler fell far behind).
    static unsigned droppedRecords();
    // Hands queued records to the handler now (the message window does this by itself).
    static void deliverPending();
};
