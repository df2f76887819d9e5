<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ActionAPI</name>
    <message>
        <location filename="../src/actions/actionapi.cpp" line="27"/>
        <source>Failure at line %1: %2</source>
        <translation>Fehler in Zeile %1: %2</translation>
    </message>
    <message>
        <location filename="../src/actions/actionapi.cpp" line="34"/>
        <source>Failure: the script was stopped because it ran longer than %1 ms.</source>
        <translation>Fehler: Das Skript wurde angehalten, weil es länger als %1 ms lief.</translation>
    </message>
    <message>
        <location filename="../src/actions/actionapi.cpp" line="102"/>
        <source>The action script is not a function.</source>
        <translation>Das Aktionsskript ist keine Funktion.</translation>
    </message>
    <message>
        <location filename="../src/actions/actionapi.cpp" line="115"/>
        <source>The action script threw: %1</source>
        <translation>Das Aktionsskript hat eine Ausnahme ausgelöst: %1</translation>
    </message>
    <message>
        <location filename="../src/actions/actionapi.cpp" line="131"/>
        <source>Failed to open: </source>
        <translation>Öffnen fehlgeschlagen: </translation>
    </message>
    <message>
        <location filename="../src/actions/actionapi.cpp" line="137"/>
        <source>Failed to parse json: </source>
        <translation>JSON konnte nicht gelesen werden: </translation>
    </message>
</context>
<context>
    <name>ActionEditor</name>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="63"/>
        <source>New action</source>
        <translation>Neue Aktion</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="65"/>
        <source>The quick brown fox jumps over the lazy dog.</source>
        <translation>Franz jagt im komplett verwahrlosten Taxi quer durch Bayern.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="74"/>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="94"/>
        <source>Parameters</source>
        <translation>Parameter</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="114"/>
        <source>Title:</source>
        <translation>Titel:</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="115"/>
        <source>Description:</source>
        <translation>Beschreibung:</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="120"/>
        <source>Test input:</source>
        <translation>Testeingabe:</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="121"/>
        <source>Output:</source>
        <translation>Ausgabe:</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="175"/>
        <source>Status: Evaluating...</source>
        <translation>Status: Wird ausgewertet...</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="184"/>
        <location filename="../src/ui/actions/actioneditor.cpp" line="198"/>
        <source>Status: </source>
        <translation>Status: </translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="198"/>
        <source>Success</source>
        <translation>Erfolgreich</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actioneditor.cpp" line="272"/>
        <source>Writing the action file failed: </source>
        <translation>Die Aktionsdatei konnte nicht geschrieben werden: </translation>
    </message>
</context>
<context>
    <name>ActionList</name>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="21"/>
        <source>To lowercase</source>
        <translation>In Kleinbuchstaben</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="22"/>
        <source>Changes every letter to lower case.</source>
        <translation>Wandelt jeden Buchstaben in einen Kleinbuchstaben um.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="23"/>
        <source>To uppercase</source>
        <translation>In Großbuchstaben</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="24"/>
        <source>Changes every letter to upper case.</source>
        <translation>Wandelt jeden Buchstaben in einen Großbuchstaben um.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="25"/>
        <source>JSON Pretty Print</source>
        <translation>JSON formatieren</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="26"/>
        <source>Formats JSON with an indent of two spaces.</source>
        <translation>Formatiert JSON mit einer Einrückung von zwei Leerzeichen.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="27"/>
        <source>Stript HTML tags</source>
        <translation>HTML-Tags entfernen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="28"/>
        <source>Removes HTML tags and keeps the text, with links written out.</source>
        <translation>Entfernt HTML-Tags und behält den Text, Links mit ausgeschriebenem Ziel.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="30"/>
        <source>Current time</source>
        <translation>Aktuelle Uhrzeit</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="31"/>
        <source>The current date and time.</source>
        <translation>Das aktuelle Datum und die Uhrzeit.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="32"/>
        <source>Generate password</source>
        <translation>Passwort erzeugen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="33"/>
        <source>A random password of 16 letters, digits and punctuation.</source>
        <translation>Ein zufälliges Passwort aus 16 Buchstaben, Ziffern und Satzzeichen.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="34"/>
        <source>Hex dump</source>
        <translation>Hex-Dump</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="35"/>
        <source>The text&apos;s UTF-8 bytes in hexadecimal.</source>
        <translation>Die UTF-8-Bytes des Textes in hexadezimaler Form.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="36"/>
        <source>Date to Value</source>
        <translation>Datum in Zahlenwert</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="37"/>
        <source>Reads a date and gives its milliseconds since 1970-01-01 UTC.</source>
        <translation>Liest ein Datum und gibt seine Millisekunden seit 1970-01-01 UTC aus.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="39"/>
        <source>Value to Date</source>
        <translation>Zahlenwert in Datum</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="40"/>
        <source>Reads milliseconds since 1970-01-01 UTC and gives the local date and time.</source>
        <translation>Liest Millisekunden seit 1970-01-01 UTC und gibt das lokale Datum mit Uhrzeit aus.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="42"/>
        <source>Create GUID</source>
        <translation>GUID erzeugen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="43"/>
        <source>A new random identifier (UUID version 4).</source>
        <translation>Eine neue zufällige Kennung (UUID Version 4).</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="44"/>
        <source>Word wrap</source>
        <translation>Zeilenumbruch</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="45"/>
        <source>Wraps lines at spaces so that none is longer than the length (80 when empty).</source>
        <translation>Bricht Zeilen an Leerzeichen um, sodass keine länger als die Länge ist (80, wenn leer).</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="48"/>
        <source>Split lines</source>
        <translation>Zeilen aufteilen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="49"/>
        <source>Splits the text at the separator that gives the most pieces; each piece becomes a clipping of its own.</source>
        <translation>Teilt den Text am Trennzeichen, das die meisten Teile ergibt; jeder Teil wird ein eigener Eintrag.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="163"/>
        <source>View</source>
        <translation>Ansehen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="163"/>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="165"/>
        <source>Set shortcut</source>
        <translation>Tastenkürzel festlegen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="168"/>
        <source>Remove shortcut</source>
        <translation>Tastenkürzel entfernen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="172"/>
        <source>Show in menu</source>
        <translation>Im Menü zeigen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="172"/>
        <source>Hide from menu</source>
        <translation>Im Menü ausblenden</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="176"/>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="228"/>
        <source>Are you sure you want to delete the action &apos;%1&apos;?</source>
        <translation>Soll die Aktion &apos;%1&apos; wirklich gelöscht werden?</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlist.cpp" line="235"/>
        <source>Failed to delete the file &apos;%1&apos;.</source>
        <translation>Die Datei &apos;%1&apos; konnte nicht gelöscht werden.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlistrow.cpp" line="48"/>
        <source>Built-in actions cannot be edited.</source>
        <translation>Mitgelieferte Aktionen können nicht bearbeitet werden.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlistrow.cpp" line="51"/>
        <source>This action file cannot be read.</source>
        <translation>Diese Aktionsdatei kann nicht gelesen werden.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlistrow.cpp" line="54"/>
        <source>There are errors in the action script.</source>
        <translation>Das Aktionsskript enthält Fehler.</translation>
    </message>
    <message>
        <location filename="../src/ui/actions/actionlistrow.cpp" line="62"/>
        <source>More</source>
        <translation>Mehr</translation>
    </message>
    <message>
        <location filename="../src/actions/actionfiles.cpp" line="49"/>
        <source>This action file cannot be read: %1</source>
        <translation>Diese Aktionsdatei kann nicht gelesen werden: %1</translation>
    </message>
</context>
<context>
    <name>AnnotationCanvas</name>
    <message>
        <location filename="../src/ui/annotation/annotationcanvas.cpp" line="19"/>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationcanvas.cpp" line="19"/>
        <source>Text of the box:</source>
        <translation>Text des Felds:</translation>
    </message>
</context>
<context>
    <name>AnnotationEditor</name>
    <message>
        <location filename="../src/ui/annotation/addannotationcommand.cpp" line="12"/>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="50"/>
        <source>Arrow</source>
        <translation>Pfeil</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/addannotationcommand.cpp" line="13"/>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="51"/>
        <source>Rectangle</source>
        <translation>Rechteck</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/addannotationcommand.cpp" line="14"/>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="52"/>
        <source>Marker</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/addannotationcommand.cpp" line="15"/>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="53"/>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/addannotationcommand.cpp" line="16"/>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="54"/>
        <source>Highlight</source>
        <translation>Hervorhebung</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="26"/>
        <source>Annotate image</source>
        <translation>Bild beschriften</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="55"/>
        <location filename="../src/ui/annotation/cropcommand.cpp" line="10"/>
        <source>Crop</source>
        <translation>Zuschneiden</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="67"/>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="104"/>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="74"/>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="75"/>
        <source>Line width</source>
        <translation>Linienbreite</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="80"/>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="82"/>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="96"/>
        <source>Zoom to fit</source>
        <translation>Einpassen</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="98"/>
        <source>Actual size</source>
        <translation>Originalgröße</translation>
    </message>
    <message>
        <location filename="../src/ui/annotation/annotationeditor.cpp" line="143"/>
        <source>Discard the changes to the image?</source>
        <translation>Die Änderungen am Bild verwerfen?</translation>
    </message>
</context>
<context>
    <name>ApplicationsList</name>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="133"/>
        <source>Paste with</source>
        <translation>Einfügen mit</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="137"/>
        <source>Automatic (Shift+Insert in terminals, else Ctrl+V)</source>
        <translation>Automatisch (Umschalt+Einfg in Terminals, sonst Strg+V)</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="156"/>
        <source>Don&apos;t add copied items to history</source>
        <translation>Kopierte Elemente nicht in den Verlauf aufnehmen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="156"/>
        <source>Never copy images to clipboard</source>
        <translation>Nie Bilder in die Zwischenablage kopieren</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="157"/>
        <source>Always copy as plain text only</source>
        <translation>Immer nur als reinen Text kopieren</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="157"/>
        <source>Clear style from text</source>
        <translation>Formatierung aus Text entfernen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="158"/>
        <source>Do not expand keywords</source>
        <translation>Kürzel nicht ersetzen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="158"/>
        <source>Delay text expansion for %1 ms</source>
        <translation>Textersetzung um %1 ms verzögern</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="167"/>
        <source>Exclude from history</source>
        <translation>Vom Verlauf ausschließen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="167"/>
        <source>Ignore images</source>
        <translation>Bilder ignorieren</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="167"/>
        <source>Plain text only</source>
        <translation>Nur reiner Text</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="168"/>
        <source>Clear style</source>
        <translation>Formatierung entfernen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="168"/>
        <source>Don&apos;t expand keywords</source>
        <translation>Kürzel nicht ersetzen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="168"/>
        <source>Set text expansion delay...</source>
        <translation>Verzögerung der Textersetzung festlegen...</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/applicationslist.cpp" line="171"/>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>ClipboardMonitor</name>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="34"/>
        <source>Clipboard monitor</source>
        <translation>Zwischenablage-Monitor</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="36"/>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="36"/>
        <source>Size (bytes)</source>
        <translation>Größe (Bytes)</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="39"/>
        <source>Clipboard formats</source>
        <translation>Formate der Zwischenablage</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="50"/>
        <source>Marked private: the content is hidden.</source>
        <translation>Als privat gekennzeichnet: Der Inhalt ist verborgen.</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="51"/>
        <source>Show the content</source>
        <translation>Inhalt anzeigen</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="90"/>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="90"/>
        <source>Owned by: %1</source>
        <translation>Gehört zu: %1</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="93"/>
        <source>The clipboard is empty.</source>
        <translation>Die Zwischenablage ist leer.</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="124"/>
        <source>Marked private by the program that copied it: Velmorin does not record it.</source>
        <translation>Vom kopierenden Programm als privat markiert: Velmorin zeichnet es nicht auf.</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="128"/>
        <source>Put there by Velmorin (for %1): not recorded again.</source>
        <translation>Von Velmorin eingefügt (für %1): wird nicht erneut aufgezeichnet.</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="129"/>
        <source>no application</source>
        <translation>keine Anwendung</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="131"/>
        <source>No marks: Velmorin records it unless a rule for the application says otherwise.</source>
        <translation>Keine Markierungen: Velmorin zeichnet es auf, sofern keine Regel für die Anwendung etwas anderes sagt.</translation>
    </message>
    <message>
        <location filename="../src/ui/clipboardmonitor.cpp" line="154"/>
        <source>This image cannot be shown.</source>
        <translation>Dieses Bild kann nicht angezeigt werden.</translation>
    </message>
</context>
<context>
    <name>Clipping</name>
    <message>
        <location filename="../src/history/clipping.cpp" line="153"/>
        <source>%1 × %2 pixels, %3</source>
        <translation>%1 × %2 Pixel, %3</translation>
    </message>
</context>
<context>
    <name>ClippingEditor</name>
    <message>
        <location filename="../src/ui/clippingeditor.cpp" line="17"/>
        <location filename="../src/ui/clippingeditor.cpp" line="18"/>
        <source>Edit text</source>
        <translation>Text bearbeiten</translation>
    </message>
    <message>
        <location filename="../src/ui/clippingeditor.cpp" line="21"/>
        <source>Text of the clipping</source>
        <translation>Text des Eintrags</translation>
    </message>
    <message>
        <location filename="../src/ui/clippingeditor.cpp" line="24"/>
        <source>Keep the text as the newest copy</source>
        <translation>Den Text als neueste Kopie behalten</translation>
    </message>
</context>
<context>
    <name>CrashReports</name>
    <message>
        <location filename="../src/maintenance/crashreports.cpp" line="60"/>
        <source>Velmorin closed unexpectedly last time. A report of what happened was written to %1.

Do you want to open the folder?</source>
        <translation>Velmorin wurde beim letzten Mal unerwartet beendet. Ein Bericht darüber wurde in %1 gespeichert.

Möchten Sie den Ordner öffnen?</translation>
    </message>
</context>
<context>
    <name>CustomKeySequenceEdit</name>
    <message>
        <location filename="../src/ui/customkeysequenceedit.cpp" line="55"/>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <location filename="../src/ui/customkeysequenceedit.cpp" line="56"/>
        <source>No shortcut</source>
        <translation>Kein Tastenkürzel</translation>
    </message>
</context>
<context>
    <name>DelayDialog</name>
    <message>
        <location filename="../src/ui/settings/delaydialog.cpp" line="13"/>
        <source>Set delay</source>
        <translation>Verzögerung festlegen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/delaydialog.cpp" line="22"/>
        <source>ms</source>
        <translation>ms</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/delaydialog.cpp" line="26"/>
        <source>Text expansion delay (in ms)</source>
        <translation>Verzögerung der Textersetzung (in ms)</translation>
    </message>
</context>
<context>
    <name>HistoryFile</name>
    <message>
        <location filename="../src/history/historyfile.cpp" line="528"/>
        <source>the folder %1 cannot be made</source>
        <translation>der Ordner %1 kann nicht angelegt werden</translation>
    </message>
</context>
<context>
    <name>HistoryItemModel</name>
    <message>
        <location filename="../src/history/historyitemmodel.cpp" line="722"/>
        <source>Failed to parse the clippings file: </source>
        <translation>Die Verlaufsdatei konnte nicht gelesen werden: </translation>
    </message>
    <message numerus="yes">
        <location filename="../src/history/historyitemmodel.cpp" line="725"/>
        <source>%n clipping(s) in the clippings file could not be taken and were left out: larger than the size limit, or damaged.</source>
        <translation>
            <numerusform>%n Eintrag in der Datei konnte nicht übernommen werden und wurde ausgelassen: größer als die Größengrenze oder beschädigt.</numerusform>
            <numerusform>%n Einträge in der Datei konnten nicht übernommen werden und wurden ausgelassen: größer als die Größengrenze oder beschädigt.</numerusform>
        </translation>
    </message>
    <message>
        <location filename="../src/history/historyitemmodel.cpp" line="766"/>
        <source>Writing the clippings file failed: %1 (%2). The clippings are kept and saved as soon as writing works again.</source>
        <translation>Die Datei mit den Einträgen konnte nicht geschrieben werden: %1 (%2). Die Einträge bleiben erhalten und werden gespeichert, sobald das Schreiben wieder gelingt.</translation>
    </message>
</context>
<context>
    <name>HistoryItemView</name>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="60"/>
        <source>Clipboard history</source>
        <translation>Zwischenablage-Verlauf</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="108"/>
        <source>Failed to run action &apos;%1&apos;
%2</source>
        <translation>Die Aktion &apos;%1&apos; konnte nicht ausgeführt werden
%2</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="138"/>
        <source>No text was found in the image.</source>
        <translation>Im Bild wurde kein Text gefunden.</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="156"/>
        <source>The image of this clipping cannot be read.</source>
        <translation>Das Bild dieses Eintrags kann nicht gelesen werden.</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="260"/>
        <source>&amp;Paste</source>
        <translation>&amp;Einfügen</translation>
    </message>
    <message numerus="yes">
        <location filename="../src/ui/history/historyitemview.cpp" line="260"/>
        <source>&amp;Paste %n items joined</source>
        <translation>
            <numerusform>%n Eintrag &amp;verbunden einfügen</numerusform>
            <numerusform>%n Einträge &amp;verbunden einfügen</numerusform>
        </translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="264"/>
        <source>Paste as &amp;image</source>
        <translation>Als &amp;Bild einfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="266"/>
        <source>Paste as &amp;file</source>
        <translation>Als &amp;Datei einfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="268"/>
        <source>&amp;Annotate...</source>
        <translation>&amp;Beschriften...</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="272"/>
        <source>E&amp;xtract text</source>
        <translation>Te&amp;xt erkennen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="275"/>
        <source>Paste as &amp;plain text</source>
        <translation>Als &amp;reinen Text einfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="279"/>
        <source>&amp;Type text</source>
        <translation>Text &amp;tippen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="291"/>
        <source>&amp;Edit text...</source>
        <translation>Text &amp;bearbeiten...</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="293"/>
        <source>&amp;Join into a new clipping</source>
        <translation>Zu neuem Eintrag &amp;zusammenfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="294"/>
        <source>Re&amp;verse the order</source>
        <translation>Reihenfolge &amp;umkehren</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="300"/>
        <source>Clear st&amp;yle</source>
        <translation>Formatierung &amp;entfernen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="303"/>
        <source>P&amp;in to the top</source>
        <translation>Oben an&amp;heften</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="307"/>
        <source>&amp;Keep forever</source>
        <translation>&amp;Für immer behalten</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="324"/>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="330"/>
        <source>Add to &amp;snippets</source>
        <translation>Zu &amp;Textbausteinen hinzufügen</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="342"/>
        <source>New group</source>
        <translation>Neue Gruppe</translation>
    </message>
    <message>
        <location filename="../src/ui/history/historyitemview.cpp" line="343"/>
        <source>Clippings</source>
        <translation>Einträge</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="82"/>
        <source>Velmorin</source>
        <translation>Velmorin</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="133"/>
        <source>Select sync target folder</source>
        <translation>Ordner für die Synchronisation wählen</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="143"/>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="144"/>
        <source>Snippets</source>
        <translation>Textbausteine</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="147"/>
        <source>History (%1)</source>
        <translation>Verlauf (%1)</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="148"/>
        <source>Snippets (%1)</source>
        <translation>Textbausteine (%1)</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="157"/>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="159"/>
        <source>Keep the window open</source>
        <translation>Fenster geöffnet lassen</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="179"/>
        <source>Copied items appear here.</source>
        <translation>Kopierte Einträge erscheinen hier.</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="397"/>
        <source>Current clipboard content is not text. Unable to run the action.</source>
        <translation>Die Zwischenablage enthält keinen Text. Die Aktion kann nicht ausgeführt werden.</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="406"/>
        <source>Failed to run action &apos;%1&apos;
%2</source>
        <translation>Die Aktion &apos;%1&apos; konnte nicht ausgeführt werden
%2</translation>
    </message>
    <message>
        <location filename="../src/ui/mainwindow.cpp" line="642"/>
        <source>Another program already uses %1, so Velmorin cannot use it. &lt;a href=&quot;shortcuts&quot;&gt;Choose another shortcut&lt;/a&gt;</source>
        <translation>Ein anderes Programm verwendet bereits %1, daher kann Velmorin dieses Tastenkürzel nicht nutzen. &lt;a href=&quot;shortcuts&quot;&gt;Anderes Tastenkürzel wählen&lt;/a&gt;</translation>
    </message>
</context>
<context>
    <name>O2</name>
    <message>
        <location filename="../oauth2/o2.cpp" line="81"/>
        <source>Unable to receive the answer of the browser: port %1 is in use (%2).</source>
        <translation>Die Antwort des Browsers kann nicht empfangen werden: Port %1 ist belegt (%2).</translation>
    </message>
    <message>
        <location filename="../oauth2/o2.cpp" line="116"/>
        <source>Google refused the authorization: %1</source>
        <translation>Google hat die Autorisierung abgelehnt: %1</translation>
    </message>
    <message>
        <location filename="../oauth2/o2.cpp" line="122"/>
        <source>The answer of the browser does not belong to this authorization.</source>
        <translation>Die Antwort des Browsers gehört nicht zu dieser Autorisierung.</translation>
    </message>
    <message>
        <location filename="../oauth2/o2.cpp" line="127"/>
        <source>The answer of the browser holds no authorization code.</source>
        <translation>Die Antwort des Browsers enthält keinen Autorisierungscode.</translation>
    </message>
    <message>
        <location filename="../oauth2/o2.cpp" line="174"/>
        <source>Google&apos;s answer holds no access token.</source>
        <translation>Die Antwort von Google enthält kein Zugriffstoken.</translation>
    </message>
    <message>
        <location filename="../oauth2/o2.cpp" line="189"/>
        <source>The access token could not be obtained: %1</source>
        <translation>Das Zugriffstoken konnte nicht abgerufen werden: %1</translation>
    </message>
    <message>
        <location filename="../oauth2/o2.cpp" line="281"/>
        <source>Google no longer accepts the authorization. Please connect again.</source>
        <translation>Google akzeptiert die Autorisierung nicht mehr. Bitte verbinden Sie sich erneut.</translation>
    </message>
</context>
<context>
    <name>O2ReplyServer</name>
    <message>
        <location filename="../oauth2/o2replyserver.cpp" line="54"/>
        <source>This answer does not belong to the sign-in in progress. Velmorin goes on waiting for the browser&apos;s answer.</source>
        <translation>Diese Antwort gehört nicht zur laufenden Anmeldung. Velmorin wartet weiter auf die Antwort des Browsers.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <location filename="../src/app/main.cpp" line="163"/>
        <source>Velmorin is already running!</source>
        <translation>Velmorin läuft bereits!</translation>
    </message>
</context>
<context>
    <name>RelativeTime</name>
    <message>
        <location filename="../src/base/relativetime.cpp" line="12"/>
        <source>now</source>
        <translation>jetzt</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="14"/>
        <source>%1 min</source>
        <translation>%1 Min.</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="16"/>
        <source>%1 h</source>
        <translation>%1 Std.</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="18"/>
        <source>%1 d</source>
        <translation>%1 T.</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="35"/>
        <source>A few seconds ago</source>
        <translation>Vor wenigen Sekunden</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="37"/>
        <source>A minute ago</source>
        <translation>Vor einer Minute</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="39"/>
        <source>%1 minutes ago</source>
        <translation>Vor %1 Minuten</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="41"/>
        <source>An hour ago</source>
        <translation>Vor einer Stunde</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="43"/>
        <source>%1 hours ago</source>
        <translation>Vor %1 Stunden</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="45"/>
        <source>A day ago</source>
        <translation>Vor einem Tag</translation>
    </message>
    <message>
        <location filename="../src/base/relativetime.cpp" line="46"/>
        <source>%1 days ago</source>
        <translation>Vor %1 Tagen</translation>
    </message>
</context>
<context>
    <name>ReleaseNotesDialog</name>
    <message>
        <location filename="../src/ui/releasenotesdialog.cpp" line="11"/>
        <source>What&apos;s new in Velmorin</source>
        <translation>Neu in Velmorin</translation>
    </message>
    <message>
        <location filename="../src/ui/releasenotesdialog.cpp" line="34"/>
        <source>The release notes are missing from this build.</source>
        <translation>Diesem Build fehlen die Versionshinweise.</translation>
    </message>
</context>
<context>
    <name>RunActionMenu</name>
    <message>
        <location filename="../src/ui/actions/runactionmenu.cpp" line="7"/>
        <source>Run action</source>
        <translation>Aktion ausführen</translation>
    </message>
</context>
<context>
    <name>SearchEdit</name>
    <message>
        <location filename="../src/ui/search/searchedit.cpp" line="7"/>
        <source>Type to search, Alt+1–9 to paste</source>
        <translation>Tippen zum Suchen, Alt+1–9 fügt ein</translation>
    </message>
    <message>
        <location filename="../src/ui/search/searchedit.cpp" line="8"/>
        <source>Search</source>
        <translation>Suche</translation>
    </message>
</context>
<context>
    <name>SearchView</name>
    <message>
        <location filename="../src/ui/search/searchview.cpp" line="11"/>
        <source>Search results</source>
        <translation>Suchergebnisse</translation>
    </message>
    <message>
        <location filename="../src/ui/search/searchview.cpp" line="31"/>
        <source>No clippings match</source>
        <translation>Keine passenden Einträge</translation>
    </message>
</context>
<context>
    <name>Secrets</name>
    <message>
        <location filename="../src/base/secrets.cpp" line="112"/>
        <source>this system has no secret store</source>
        <translation>dieses System hat keinen Schlüsselbund</translation>
    </message>
    <message>
        <location filename="../src/base/secrets.cpp" line="126"/>
        <source>the secret store did not take them</source>
        <translation>der Schlüsselbund hat sie nicht angenommen</translation>
    </message>
</context>
<context>
    <name>SettingsDialog</name>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="39"/>
        <source>Velmorin Settings</source>
        <translation>Velmorin-Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="41"/>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="42"/>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="44"/>
        <source>Applications</source>
        <translation>Anwendungen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="45"/>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="47"/>
        <source>Snippets</source>
        <translation>Textbausteine</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="76"/>
        <source>Write a debug log</source>
        <translation>Debug-Protokoll schreiben</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="77"/>
        <source>The debug log is written from the next start on.</source>
        <translation>Das Debug-Protokoll wird ab dem nächsten Start geschrieben.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="71"/>
        <source>Start with the system</source>
        <translation>Mit dem System starten</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="157"/>
        <source>Only expand keyword after space is pressed</source>
        <translation>Schlüsselwort erst nach einem Leerzeichen ersetzen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="118"/>
        <source>Open the paste window:</source>
        <translation>Einfügefenster öffnen:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="43"/>
        <source>Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="50"/>
        <source>Sync</source>
        <translation>Synchronisation</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="72"/>
        <source>Open the paste window at the mouse</source>
        <translation>Einfügefenster an der Maus öffnen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="73"/>
        <source>Paste as plain text by default</source>
        <translation>Standardmäßig als reinen Text einfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="75"/>
        <source>Send crash reports</source>
        <translation>Absturzberichte senden</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="80"/>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="81"/>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="82"/>
        <source>Follow the system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="85"/>
        <source>Theme:</source>
        <translation>Erscheinungsbild:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="94"/>
        <source>This build has no address to send crash reports to; they stay on this computer.</source>
        <translation>Diese Ausgabe hat keine Adresse für Absturzberichte; sie bleiben auf diesem Computer.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="114"/>
        <source>Open the paste window</source>
        <translation>Einfügefenster öffnen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="115"/>
        <source>Paste as plain text</source>
        <translation>Als reinen Text einfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="116"/>
        <source>Paste the next item</source>
        <translation>Nächsten Eintrag einfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="120"/>
        <source>Paste as plain text:</source>
        <translation>Als reinen Text einfügen:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="122"/>
        <source>Paste the next item:</source>
        <translation>Nächsten Eintrag einfügen:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="138"/>
        <source>Browse...</source>
        <translation>Durchsuchen...</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="141"/>
        <source>JSON files (*.json)</source>
        <translation>JSON-Dateien (*.json)</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="159"/>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="161"/>
        <source>Snippet file</source>
        <translation>Textbaustein-Datei</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="161"/>
        <source>Snippet file:</source>
        <translation>Textbaustein-Datei:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="162"/>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="229"/>
        <source>A new file place applies from the next start.</source>
        <translation>Ein neuer Speicherort gilt ab dem nächsten Start.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="177"/>
        <source>Export snippets...</source>
        <translation>Textbausteine exportieren...</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="179"/>
        <source>Import snippets...</source>
        <translation>Textbausteine importieren...</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="197"/>
        <source>Save snippets</source>
        <translation>Textbausteine speichern</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="198"/>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="208"/>
        <source>JSON files (*.json);;All files (*.*);</source>
        <translation>JSON-Dateien (*.json);;Alle Dateien (*.*);</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="201"/>
        <source>Writing the snippets file failed: </source>
        <translation>Die Textbausteindatei konnte nicht geschrieben werden: </translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="207"/>
        <source>Load snippets</source>
        <translation>Textbausteine laden</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="211"/>
        <source>Failed to parse the snippets file: </source>
        <translation>Die Textbausteindatei konnte nicht gelesen werden: </translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="222"/>
        <source> characters</source>
        <translation> Zeichen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="225"/>
        <source> × 1024 characters</source>
        <translation> × 1024 Zeichen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="226"/>
        <source>Keep copied images</source>
        <translation>Kopierte Bilder behalten</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="74"/>
        <source>Clear the history on quit (locked items stay)</source>
        <translation>Verlauf beim Beenden leeren (gesperrte Elemente bleiben)</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="124"/>
        <source>Snippets and actions get their own shortcuts on their pages. Linux terminals keep Ctrl+Shift+V for their own paste: to open the paste window there, choose other keys.</source>
        <translation>Textbausteine und Aktionen erhalten ihre eigenen Tastenkürzel auf ihren Seiten. Linux-Terminals behalten Strg+Umschalt+V für ihr eigenes Einfügen: Um das Einfügefenster dort zu öffnen, wählen Sie andere Tasten.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="228"/>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="237"/>
        <source>History file</source>
        <translation>Verlaufsdatei</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="233"/>
        <source>Clippings to keep:</source>
        <translation>Anzahl der Einträge:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="234"/>
        <source>Ignore texts shorter than:</source>
        <translation>Texte ignorieren, kürzer als:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="235"/>
        <source>Ignore texts longer than:</source>
        <translation>Texte ignorieren, länger als:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="237"/>
        <source>History file:</source>
        <translation>Verlaufsdatei:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="247"/>
        <source>Applications appear here once you copy something in them. Right-click one to change how its copies are treated and which keys paste into it.</source>
        <translation>Anwendungen erscheinen hier, sobald Sie in ihnen etwas kopieren. Klicken Sie mit der rechten Maustaste auf eine, um festzulegen, wie ihre Kopien behandelt werden und mit welchen Tasten in sie eingefügt wird.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="253"/>
        <source>Rules</source>
        <translation>Regeln</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="268"/>
        <source>Actions change a clipping&apos;s text with a small script. Run them from a clipping&apos;s menu or give them a shortcut. Changes here apply at once.</source>
        <translation>Aktionen ändern den Text eines Eintrags mit einem kleinen Skript. Führen Sie sie aus dem Menü eines Eintrags aus oder geben Sie ihnen ein Tastenkürzel. Änderungen hier gelten sofort.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/settingsdialog.cpp" line="275"/>
        <source>New action</source>
        <translation>Neue Aktion</translation>
    </message>
</context>
<context>
    <name>ShortcutDialog</name>
    <message>
        <location filename="../src/ui/shortcutdialog.cpp" line="12"/>
        <source>Set shortcut</source>
        <translation>Tastenkürzel festlegen</translation>
    </message>
    <message>
        <location filename="../src/ui/shortcutdialog.cpp" line="13"/>
        <source>Enter shortcut</source>
        <translation>Tastenkürzel eingeben</translation>
    </message>
</context>
<context>
    <name>SnippetClipDialog</name>
    <message>
        <location filename="../src/ui/snippets/snippetclipdialog.cpp" line="16"/>
        <source>Current clipping</source>
        <translation>Aktueller Eintrag</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetclipdialog.cpp" line="17"/>
        <source>Clipping from position</source>
        <translation>Eintrag an Position</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetclipdialog.cpp" line="18"/>
        <source>Clipping that matches</source>
        <translation>Eintrag, der passt zu</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetclipdialog.cpp" line="22"/>
        <source>Choose clipping type</source>
        <translation>Art des Eintrags wählen</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetclipdialog.cpp" line="30"/>
        <source>Enter regular expression which is matched with the clipping history</source>
        <translation>Regulären Ausdruck eingeben, der mit dem Verlauf abgeglichen wird</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetclipdialog.cpp" line="33"/>
        <source>Clipping type</source>
        <translation>Art des Eintrags</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetclipdialog.cpp" line="76"/>
        <source>The expression must be valid and must not hold &quot;}&quot;.</source>
        <translation>Der Ausdruck muss gültig sein und darf kein „}“ enthalten.</translation>
    </message>
</context>
<context>
    <name>SnippetItemModel</name>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="27"/>
        <source>Info</source>
        <translation>Info</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="28"/>
        <source>Clipboard</source>
        <translation>Zwischenablage</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="29"/>
        <source>Keywords</source>
        <translation>Schlüsselwörter</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="30"/>
        <source>Email</source>
        <translation>E-Mail</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="31"/>
        <source>Get back</source>
        <translation>Rückmeldung</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="32"/>
        <source>Thanks</source>
        <translation>Dank</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="33"/>
        <source>Out of office</source>
        <translation>Abwesenheit</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="34"/>
        <source>Messaging</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="35"/>
        <source>Be right back</source>
        <translation>Bin gleich zurück</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="36"/>
        <source>In a meeting</source>
        <translation>In einer Besprechung</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="37"/>
        <source>On my way</source>
        <translation>Bin unterwegs</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="38"/>
        <source>Sounds good</source>
        <translation>Klingt gut</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="39"/>
        <source>Templates</source>
        <translation>Vorlagen</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="40"/>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="41"/>
        <source>Letter</source>
        <translation>Brief</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="42"/>
        <source>Bug report</source>
        <translation>Fehlerbericht</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="43"/>
        <source>Emoji</source>
        <translation>Emoji</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="44"/>
        <source>Pleading Face</source>
        <translation>Bittendes Gesicht</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="45"/>
        <source>Red Heart</source>
        <translation>Rotes Herz</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="46"/>
        <source>Sparkles</source>
        <translation>Funkeln</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="47"/>
        <source>Face with Tears of Joy</source>
        <translation>Gesicht mit Freudentränen</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="48"/>
        <source>Smiling Face with Heart-Eyes</source>
        <translation>Lächelndes Gesicht mit Herzaugen</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="49"/>
        <source>Thumbs Up</source>
        <translation>Daumen hoch</translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="128"/>
        <source>The snippets file cannot be read: </source>
        <translation>Die Textbausteindatei kann nicht gelesen werden: </translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="134"/>
        <source>Failed to parse the snippets file: </source>
        <translation>Die Textbausteindatei konnte nicht gelesen werden: </translation>
    </message>
    <message>
        <location filename="../src/snippets/snippetitemmodel.cpp" line="409"/>
        <source>Writing the snippets file failed: </source>
        <translation>Die Textbausteindatei konnte nicht geschrieben werden: </translation>
    </message>
</context>
<context>
    <name>SnippetPlaceholders</name>
    <message>
        <location filename="../src/snippets/snippetplaceholders.cpp" line="71"/>
        <source>Failed to run action &apos;%1&apos;
%2</source>
        <translation>Die Aktion &apos;%1&apos; konnte nicht ausgeführt werden
%2</translation>
    </message>
</context>
<context>
    <name>SnippetTreeView</name>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="15"/>
        <source>Snippets</source>
        <translation>Textbausteine</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="76"/>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="78"/>
        <source>Edit...</source>
        <translation>Bearbeiten...</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="83"/>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="84"/>
        <source>New snippet</source>
        <translation>Neuer Textbaustein</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="87"/>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="88"/>
        <source>New group</source>
        <translation>Neue Gruppe</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="91"/>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="101"/>
        <source>Remove the group &apos;%1&apos; with all its snippets?</source>
        <translation>Die Gruppe &apos;%1&apos; mit allen ihren Textbausteinen entfernen?</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippettreeview.cpp" line="101"/>
        <source>Remove the snippet &apos;%1&apos;?</source>
        <translation>Den Textbaustein &apos;%1&apos; entfernen?</translation>
    </message>
</context>
<context>
    <name>SnippetsEditor</name>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="65"/>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="224"/>
        <source>New group</source>
        <translation>Neue Gruppe</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="66"/>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="235"/>
        <source>New snippet</source>
        <translation>Neuer Textbaustein</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="67"/>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="68"/>
        <source>Up</source>
        <translation>Nach oben</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="69"/>
        <source>Down</source>
        <translation>Nach unten</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="70"/>
        <source>Move to</source>
        <translation>Verschieben nach</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="85"/>
        <source>Typed anywhere, replaced by the text</source>
        <translation>Überall getippt, durch den Text ersetzt</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="92"/>
        <source>Hide the text in the lists</source>
        <translation>Text in den Listen verbergen</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="96"/>
        <source>Cursor</source>
        <translation>Cursor</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="97"/>
        <source>Where the caret goes after pasting; around a selection, what is selected</source>
        <translation>Wohin der Cursor nach dem Einfügen geht; um eine Auswahl herum, was ausgewählt wird</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="99"/>
        <source>Clipping...</source>
        <translation>Eintrag...</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="100"/>
        <source>Inserts a text from the clipboard history when pasted</source>
        <translation>Fügt beim Einfügen einen Text aus dem Verlauf ein</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="137"/>
        <source>Text:</source>
        <translation>Text:</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="141"/>
        <source>Title:</source>
        <translation>Titel:</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="142"/>
        <source>Keyword:</source>
        <translation>Schlüsselwort:</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="144"/>
        <source>Shortcut:</source>
        <translation>Tastenkürzel:</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="205"/>
        <source>&quot;%1&quot; already has this keyword; typing it pastes the first of the two in the list.</source>
        <translation>„%1“ hat dieses Schlüsselwort schon; beim Tippen wird der erste der beiden in der Liste eingefügt.</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="211"/>
        <source>&quot;%1&quot; has the keyword &quot;%2&quot;, which begins this one: it expands first, and this keyword can never be typed.</source>
        <translation>&quot;%1&quot; hat das Schlüsselwort &quot;%2&quot;, mit dem dieses beginnt: Es wird zuerst ersetzt, und dieses Schlüsselwort lässt sich nie eintippen.</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="214"/>
        <source>This keyword begins &quot;%2&quot; of &quot;%1&quot;, which can then never be typed.</source>
        <translation>Mit diesem Schlüsselwort beginnt &quot;%2&quot; von &quot;%1&quot;, das sich dann nie eintippen lässt.</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="234"/>
        <source>Snippets</source>
        <translation>Textbausteine</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="245"/>
        <source>Delete the snippet &apos;%1&apos;?</source>
        <translation>Den Textbaustein &apos;%1&apos; löschen?</translation>
    </message>
    <message>
        <location filename="../src/ui/snippets/snippetseditor.cpp" line="246"/>
        <source>Delete the group &apos;%1&apos; with all its snippets?</source>
        <translation>Die Gruppe &apos;%1&apos; mit allen Textbausteinen löschen?</translation>
    </message>
</context>
<context>
    <name>Sync</name>
    <message>
        <location filename="../src/sync/sync.cpp" line="125"/>
        <location filename="../src/sync/sync.cpp" line="133"/>
        <location filename="../src/sync/sync.cpp" line="140"/>
        <location filename="../src/sync/sync.cpp" line="145"/>
        <location filename="../src/sync/sync.cpp" line="547"/>
        <location filename="../src/sync/sync.cpp" line="604"/>
        <source>Synchronization failed.</source>
        <translation>Synchronisation fehlgeschlagen.</translation>
    </message>
    <message>
        <location filename="../src/sync/sync.cpp" line="323"/>
        <source>Synchronizing...</source>
        <translation>Wird synchronisiert...</translation>
    </message>
    <message>
        <location filename="../src/sync/sync.cpp" line="434"/>
        <source>Synchronization successful.</source>
        <translation>Synchronisation erfolgreich.</translation>
    </message>
    <message>
        <location filename="../src/sync/sync.cpp" line="872"/>
        <source>%1 was changed or damaged online; it is not used.</source>
        <translation>%1 wurde online verändert oder beschädigt und wird nicht verwendet.</translation>
    </message>
    <message>
        <location filename="../src/sync/sync.cpp" line="875"/>
        <source>The files online use strong encryption: switch it on in the sync settings.</source>
        <translation>Die Dateien online sind stark verschlüsselt: Schalten Sie die starke Verschlüsselung in den Synchronisationseinstellungen ein.</translation>
    </message>
    <message>
        <location filename="../src/sync/sync.cpp" line="878"/>
        <source>%1 is not sealed: another computer syncs without strong encryption.</source>
        <translation>%1 ist nicht versiegelt: Ein anderer Computer synchronisiert ohne starke Verschlüsselung.</translation>
    </message>
    <message>
        <location filename="../src/sync/sync.cpp" line="881"/>
        <location filename="../src/sync/sync.cpp" line="890"/>
        <source>Decryption failed.</source>
        <translation>Entschlüsselung fehlgeschlagen.</translation>
    </message>
</context>
<context>
    <name>SyncEncryption</name>
    <message>
        <location filename="../src/sync/syncencryption.cpp" line="26"/>
        <source>Strong encryption needs a pass phrase.</source>
        <translation>Die starke Verschlüsselung braucht eine Passphrase.</translation>
    </message>
    <message>
        <location filename="../src/sync/syncencryption.cpp" line="32"/>
        <location filename="../src/sync/syncencryption.cpp" line="64"/>
        <source>The encryption key could not be made.</source>
        <translation>Der Schlüssel konnte nicht erzeugt werden.</translation>
    </message>
    <message>
        <location filename="../src/sync/syncencryption.cpp" line="43"/>
        <source>The encryption header online cannot be read.</source>
        <translation>Die Verschlüsselungsangaben online sind nicht lesbar.</translation>
    </message>
    <message>
        <location filename="../src/sync/syncencryption.cpp" line="54"/>
        <source>Wrong pass phrase: it does not open what the other computers sealed.</source>
        <translation>Falsche Passphrase: Sie öffnet nicht, was die anderen Computer versiegelt haben.</translation>
    </message>
</context>
<context>
    <name>SyncGoogleDrive</name>
    <message>
        <location filename="../src/sync/remote/syncgoogledrive.h" line="51"/>
        <source>Google Drive</source>
        <translation>Google Drive</translation>
    </message>
</context>
<context>
    <name>SyncLocalFolder</name>
    <message>
        <location filename="../src/sync/synclocalfolder.h" line="29"/>
        <source>Local folder</source>
        <translation>Lokaler Ordner</translation>
    </message>
</context>
<context>
    <name>SyncLogDialog</name>
    <message>
        <location filename="../src/ui/settings/synclogdialog.cpp" line="19"/>
        <source>Sync log</source>
        <translation>Synchronisationsprotokoll</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/synclogdialog.cpp" line="28"/>
        <source>Export...</source>
        <translation>Exportieren...</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/synclogdialog.cpp" line="29"/>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/synclogdialog.cpp" line="65"/>
        <source>Export the sync log</source>
        <translation>Synchronisationsprotokoll exportieren</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/synclogdialog.cpp" line="65"/>
        <source>Text files (*.txt)</source>
        <translation>Textdateien (*.txt)</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/synclogdialog.cpp" line="71"/>
        <source>Writing the sync log failed: </source>
        <translation>Das Protokoll konnte nicht geschrieben werden: </translation>
    </message>
</context>
<context>
    <name>SyncNone</name>
    <message>
        <location filename="../src/sync/syncnone.h" line="20"/>
        <source>None</source>
        <translation>Keine</translation>
    </message>
</context>
<context>
    <name>SyncSettingsPage</name>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="72"/>
        <source>Keep your history, snippets and actions the same on all your computers.</source>
        <translation>Verlauf, Textbausteine und Aktionen auf allen Ihren Computern gleich halten.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="73"/>
        <source>Use a shared folder</source>
        <translation>Gemeinsamen Ordner verwenden</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="76"/>
        <source>Point every computer at the same folder: on a network drive, or in a folder that a file-sharing service such as Dropbox keeps the same on all of them.</source>
        <translation>Wählen Sie auf jedem Computer denselben Ordner: auf einem Netzlaufwerk oder in einem Ordner, den ein Dienst wie Dropbox auf allen gleich hält.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="80"/>
        <source>Use Google Drive</source>
        <translation>Google Drive verwenden</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="83"/>
        <source>The data is stored in the application specific folder of your personal Google account, which only Velmorin can see.</source>
        <translation>Die Daten werden im anwendungsspezifischen Ordner Ihres persönlichen Google-Kontos gespeichert, den nur Velmorin sehen kann.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="89"/>
        <source>This build of Velmorin has no Google client configured, so it cannot connect to Google Drive. The README says how to set one up.</source>
        <translation>In diesem Build von Velmorin ist kein Google-Client eingerichtet, daher kann es keine Verbindung zu Google Drive herstellen. Die README beschreibt, wie man einen einrichtet.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="132"/>
        <source>Change folder...</source>
        <translation>Ordner ändern...</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="134"/>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="334"/>
        <source>Please choose the sync folder.</source>
        <translation>Bitte wählen Sie den Synchronisationsordner.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="142"/>
        <source>What to synchronize</source>
        <translation>Was synchronisiert wird</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="143"/>
        <source>History, with its images</source>
        <translation>Verlauf, mit seinen Bildern</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="144"/>
        <source>Snippets</source>
        <translation>Textbausteine</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="145"/>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="150"/>
        <source>Encryption</source>
        <translation>Verschlüsselung</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="151"/>
        <source>Encrypt the data with a pass phrase</source>
        <translation>Daten mit einer Passphrase verschlüsseln</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="155"/>
        <source>Pass phrase</source>
        <translation>Passphrase</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="156"/>
        <source>The same pass phrase on every computer</source>
        <translation>Dieselbe Passphrase auf jedem Computer</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="157"/>
        <source>Strong encryption</source>
        <translation>Starke Verschlüsselung</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="160"/>
        <source>A key derived from the pass phrase with Argon2id seals every file with XChaCha20-Poly1305, so that changed files are refused, and file names no longer show which contents are equal. Older versions of Velmorin cannot read these files.</source>
        <translation>Ein mit Argon2id aus der Passphrase abgeleiteter Schlüssel versiegelt jede Datei mit XChaCha20-Poly1305: Veränderte Dateien werden abgewiesen, und die Dateinamen zeigen nicht mehr, welche Inhalte gleich sind. Ältere Versionen von Velmorin können diese Dateien nicht lesen.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="167"/>
        <source>Pass phrase:</source>
        <translation>Passphrase:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="170"/>
        <source>Switch strong encryption on or off on every computer that syncs.</source>
        <translation>Schalten Sie die starke Verschlüsselung auf jedem Computer ein oder aus, der synchronisiert.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="178"/>
        <source>Status:</source>
        <translation>Status:</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="179"/>
        <source>Last success</source>
        <translation>Zuletzt erfolgreich</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="182"/>
        <source>Your other computers</source>
        <translation>Ihre anderen Computer</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="188"/>
        <source>Refresh</source>
        <translation>Aktualisieren</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="195"/>
        <source>Show sync log...</source>
        <translation>Synchronisationsprotokoll anzeigen...</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="196"/>
        <source>Stop synchronizing the data</source>
        <translation>Synchronisation beenden</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="220"/>
        <source>Full Sync</source>
        <translation>Vollständig synchronisieren</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="221"/>
        <source>Upload</source>
        <translation>Hochladen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="222"/>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="226"/>
        <source>Write the content of this computer over the online content</source>
        <translation>Den Inhalt dieses Computers über den Online-Inhalt schreiben</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="227"/>
        <source>Replace the content of this computer by the online content</source>
        <translation>Den Inhalt dieses Computers durch den Online-Inhalt ersetzen</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="276"/>
        <source>The pass phrase and the Google Drive sign-in stay in the settings, enciphered under a key built into Velmorin: %1.</source>
        <translation>Die Passphrase und die Anmeldung bei Google Drive bleiben in den Einstellungen, verschlüsselt mit einem in Velmorin eingebauten Schlüssel: %1.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="305"/>
        <source>All your local content will be overwritten with the remote data. Are you sure you want to continue?</source>
        <translation>Ihr gesamter lokaler Inhalt wird mit den entfernten Daten überschrieben. Wirklich fortfahren?</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="308"/>
        <source>The remote data will be overwritten with your local content. Are you sure you want to continue?</source>
        <translation>Die entfernten Daten werden mit Ihrem lokalen Inhalt überschrieben. Wirklich fortfahren?</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="332"/>
        <source>Please authorize Velmorin to access your Google Drive on the browser.</source>
        <translation>Bitte erlauben Sie Velmorin im Browser den Zugriff auf Ihr Google Drive.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="360"/>
        <source>Synchronizing with %1</source>
        <translation>Synchronisiert mit: %1</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="399"/>
        <source>Not synchronized</source>
        <translation>Nicht synchronisiert</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="418"/>
        <source>Changes from other computers are picked up as they arrive in the folder.</source>
        <translation>Änderungen anderer Computer werden übernommen, sobald sie im Ordner ankommen.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="421"/>
        <source>Connected to the notification server.</source>
        <translation>Mit dem Benachrichtigungsserver verbunden.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="423"/>
        <source>Failed to connect to the notification server.</source>
        <translation>Verbindung zum Benachrichtigungsserver fehlgeschlagen.</translation>
    </message>
    <message>
        <location filename="../src/ui/settings/syncsettingspage.cpp" line="425"/>
        <source>No connection to the notification server.</source>
        <translation>Keine Verbindung zum Benachrichtigungsserver.</translation>
    </message>
</context>
<context>
    <name>TextExtractor</name>
    <message>
        <location filename="../src/maintenance/textextractor.cpp" line="18"/>
        <source>Tesseract could not be started: %1</source>
        <translation>Tesseract konnte nicht gestartet werden: %1</translation>
    </message>
    <message>
        <location filename="../src/maintenance/textextractor.cpp" line="37"/>
        <source>Extracting text needs the free Tesseract program, which is not installed.

On Windows, install it from https://github.com/UB-Mannheim/tesseract/wiki and add its folder to the PATH.
On Debian or Ubuntu: sudo apt install tesseract-ocr</source>
        <translation>Für die Texterkennung wird das freie Programm Tesseract benötigt, das nicht installiert ist.

Unter Windows installieren Sie es von https://github.com/UB-Mannheim/tesseract/wiki und fügen seinen Ordner dem PATH hinzu.
Unter Debian oder Ubuntu: sudo apt install tesseract-ocr</translation>
    </message>
    <message>
        <location filename="../src/maintenance/textextractor.cpp" line="51"/>
        <source>Text is being extracted already.</source>
        <translation>Es wird bereits Text erkannt.</translation>
    </message>
    <message>
        <location filename="../src/maintenance/textextractor.cpp" line="64"/>
        <source>Extracting the text took too long and was stopped.</source>
        <translation>Die Texterkennung dauerte zu lange und wurde abgebrochen.</translation>
    </message>
    <message>
        <location filename="../src/maintenance/textextractor.cpp" line="70"/>
        <source>Tesseract could not read the image: %1</source>
        <translation>Tesseract konnte das Bild nicht lesen: %1</translation>
    </message>
</context>
<context>
    <name>TrayIcon</name>
    <message>
        <location filename="../src/ui/trayicon.cpp" line="11"/>
        <location filename="../src/ui/trayicon.cpp" line="17"/>
        <source>Velmorin</source>
        <translation>Velmorin</translation>
    </message>
    <message numerus="yes">
        <location filename="../src/ui/trayicon.cpp" line="17"/>
        <source>%n clipping(s)</source>
        <translation>
            <numerusform>%n Eintrag</numerusform>
            <numerusform>%n Einträge</numerusform>
        </translation>
    </message>
    <message>
        <location filename="../src/ui/trayicon.cpp" line="32"/>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <location filename="../src/ui/trayicon.cpp" line="33"/>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <location filename="../src/ui/trayicon.cpp" line="38"/>
        <source>Clipboard monitor</source>
        <translation>Zwischenablage-Monitor</translation>
    </message>
    <message>
        <location filename="../src/ui/trayicon.cpp" line="39"/>
        <source>What&apos;s new</source>
        <translation>Neuigkeiten</translation>
    </message>
    <message>
        <location filename="../src/ui/trayicon.cpp" line="41"/>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>UnreadableFile</name>
    <message>
        <location filename="../src/base/unreadablefile.cpp" line="16"/>
        <source>The file was kept unchanged as %1</source>
        <translation>Die Datei wurde unverändert aufbewahrt als %1</translation>
    </message>
</context>
<context>
    <name>UpdateChecker</name>
    <message>
        <location filename="../src/maintenance/updatechecker.cpp" line="17"/>
        <source>The maintenance tool did not answer in time.</source>
        <translation>Das Wartungsprogramm hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <location filename="../src/maintenance/updatechecker.cpp" line="95"/>
        <source>The maintenance tool could not check for updates.</source>
        <translation>Das Wartungsprogramm konnte nicht nach Aktualisierungen suchen.</translation>
    </message>
    <message>
        <location filename="../src/maintenance/updatechecker.cpp" line="108"/>
        <source>A new version is available:
%1

Do you want to update now?</source>
        <translation>Eine neue Version ist verfügbar:
%1

Möchten Sie jetzt aktualisieren?</translation>
    </message>
</context>
</TS>
