<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ApplicationsList</name>
    <message>
        <location filename="../src/applicationslist.cpp" line="117"/>
        <source>Don&apos;t add copied items to history</source>
        <translation>Kopierte Elemente nicht in den Verlauf aufnehmen</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="117"/>
        <source>Never copy images to clipboard</source>
        <translation>Nie Bilder in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="118"/>
        <source>Always copy as plain text only</source>
        <translation>Immer nur als reinen Text kopieren</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="118"/>
        <source>Clear style from text</source>
        <translation>Formatierung aus Text entfernen</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="119"/>
        <source>Do not expand keywords</source>
        <translation>Kürzel nicht ersetzen</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="119"/>
        <source>Delay text expansion for %1 ms</source>
        <translation>Textersetzung um %1 ms verzögern</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="128"/>
        <source>Exclude from history</source>
        <translation>Vom Verlauf ausschließen</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="128"/>
        <source>Ignore images</source>
        <translation>Bilder ignorieren</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="128"/>
        <source>Plain text only</source>
        <translation>Nur reiner Text</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="129"/>
        <source>Clear style</source>
        <translation>Formatierung entfernen</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="129"/>
        <source>Don&apos;t expand keywords</source>
        <translation>Kürzel nicht ersetzen</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="129"/>
        <source>Set text expansion delay...</source>
        <translation>Verzögerung der Textersetzung festlegen...</translation>
    </message>
    <message>
        <location filename="../src/applicationslist.cpp" line="132"/>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>ClipboardMonitor</name>
    <message>
        <location filename="../src/clipboardmonitor.cpp" line="13"/>
        <source>Clipboard monitor</source>
        <translation>Zwischenablage-Monitor</translation>
    </message>
    <message>
        <location filename="../src/clipboardmonitor.cpp" line="14"/>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <location filename="../src/clipboardmonitor.cpp" line="14"/>
        <source>Size (bytes)</source>
        <translation>Größe (Bytes)</translation>
    </message>
    <message>
        <location filename="../src/clipboardmonitor.cpp" line="17"/>
        <source>Clipboard formats</source>
        <translation>Formate der Zwischenablage</translation>
    </message>
</context>
<context>
    <name>DelayDialog</name>
    <message>
        <location filename="../src/delaydialog.cpp" line="13"/>
        <source>Set delay</source>
        <translation>Verzögerung festlegen</translation>
    </message>
    <message>
        <location filename="../src/delaydialog.cpp" line="22"/>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <location filename="../src/delaydialog.cpp" line="26"/>
        <source>Text expansion delay (in ms)</source>
        <translation>Verzögerung der Textersetzung (in ms)</translation>
    </message>
</context>
<context>
    <name>HistoryItemModel</name>
    <message>
        <location filename="../src/historyitemmodel.cpp" line="397"/>
        <source>Failed to parse the clippings file: </source>
        <translation>Die Verlaufsdatei konnte nicht gelesen werden: </translation>
    </message>
    <message>
        <location filename="../src/historyitemmodel.cpp" line="429"/>
        <source>Writing the clippings file failed: </source>
        <translation>Das Schreiben der Verlaufsdatei ist fehlgeschlagen: </translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <location filename="../src/mainwindow.cpp" line="42"/>
        <source>Velmorin</source>
        <translation>Velmorin</translation>
    </message>
    <message>
        <location filename="../src/mainwindow.cpp" line="48"/>
        <location filename="../src/mainwindow.cpp" line="49"/>
        <source>Keep the window open</source>
        <translation>Fenster geöffnet lassen</translation>
    </message>
    <message>
        <location filename="../src/mainwindow.cpp" line="52"/>
        <source>Clipboard history</source>
        <translation>Verlauf der Zwischenablage</translation>
    </message>
    <message>
        <location filename="../src/mainwindow.cpp" line="58"/>
        <source>Copied items appear here.</source>
        <translation>Kopierte Einträge erscheinen hier.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <location filename="../src/main.cpp" line="143"/>
        <source>Velmorin is already running!</source>
        <translation>Velmorin läuft bereits!</translation>
    </message>
</context>
<context>
    <name>ReleaseNotesDialog</name>
    <message>
        <location filename="../src/releasenotesdialog.cpp" line="10"/>
        <source>What&apos;s new in Velmorin</source>
        <translation>Neu in Velmorin</translation>
    </message>
    <message>
        <location filename="../src/releasenotesdialog.cpp" line="30"/>
        <source>The release notes are missing from this build.</source>
        <translation>Diesem Build fehlen die Versionshinweise.</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <location filename="../src/settingsdialog.cpp" line="23"/>
        <source>Velmorin Settings</source>
        <translation>Velmorin-Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="25"/>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="26"/>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="27"/>
        <source>Applications</source>
        <translation>Anwendungen</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="43"/>
        <source>Write a debug log</source>
        <translation>Debug-Protokoll schreiben</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="44"/>
        <source>The debug log is written from the next start on.</source>
        <translation>Das Debug-Protokoll wird ab dem nächsten Start geschrieben.</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="47"/>
        <source>Start with the system</source>
        <translation>Mit dem System starten</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="48"/>
        <source>Only expand keyword after space is pressed</source>
        <translation>Schlüsselwort erst nach einem Leerzeichen ersetzen</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="54"/>
        <source>Open the paste window:</source>
        <translation>Einfügefenster öffnen:</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="55"/>
        <source>Paste as plain text:</source>
        <translation>Als reinen Text einfügen:</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="56"/>
        <source>Paste the next item:</source>
        <translation>Nächsten Eintrag einfügen:</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="72"/>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="73"/>
        <source>No shortcut</source>
        <translation>Kein Tastenkürzel</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="90"/>
        <source> characters</source>
        <translation> Zeichen</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="93"/>
        <source> × 1024 characters</source>
        <translation> × 1024 Zeichen</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="94"/>
        <source>Keep copied images</source>
        <translation>Kopierte Bilder behalten</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="95"/>
        <source>Clear the history on quit (locked items stay)</source>
        <translation>Verlauf beim Beenden leeren (gesperrte Elemente bleiben)</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="98"/>
        <source>Clippings to keep:</source>
        <translation>Anzahl der Einträge:</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="99"/>
        <source>Ignore texts shorter than:</source>
        <translation>Texte ignorieren, kürzer als:</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="100"/>
        <source>Ignore texts longer than:</source>
        <translation>Texte ignorieren, länger als:</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="110"/>
        <source>Applications appear here once you copy something in them. Right-click one to change how its copies are treated.</source>
        <translation>Anwendungen erscheinen hier, sobald Sie in ihnen etwas kopieren. Klicken Sie mit der rechten Maustaste auf eine, um festzulegen, wie ihre Kopien behandelt werden.</translation>
    </message>
    <message>
        <location filename="../src/settingsdialog.cpp" line="115"/>
        <source>Rules</source>
        <translation>Regeln</translation>
    </message>
</context>
<context>
    <name>ShortcutDialog</name>
    <message>
        <location filename="../src/shortcutdialog.cpp" line="12"/>
        <source>Set shortcut</source>
        <translation>Tastenkürzel festlegen</translation>
    </message>
    <message>
        <location filename="../src/shortcutdialog.cpp" line="13"/>
        <source>Enter shortcut</source>
        <translation>Tastenkürzel eingeben</translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <location filename="../src/trayicon.cpp" line="9"/>
        <source>Velmorin</source>
        <translation>Velmorin</translation>
    </message>
    <message>
        <location filename="../src/trayicon.cpp" line="25"/>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <location filename="../src/trayicon.cpp" line="26"/>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/trayicon.cpp" line="28"/>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
</TS>
