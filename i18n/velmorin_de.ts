<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE">
<context>
    <name>ClipboardMonitor</name>
    <message><source>Clipboard monitor</source><translation>Zwischenablage-Monitor</translation></message>
    <message><source>Format</source><translation>Format</translation></message>
    <message><source>Size (bytes)</source><translation>Größe (Bytes)</translation></message>
    <message><source>Clipboard formats</source><translation>Formate der Zwischenablage</translation></message>
</context>
<context>
    <name>MainWindow</name>
    <message><source>Velmorin</source><translation>Velmorin</translation></message>
    <message><source>Keep the window open</source><translation>Fenster geöffnet lassen</translation></message>
    <message><source>Clipboard history</source><translation>Verlauf der Zwischenablage</translation></message>
    <message><source>Copied items appear here.</source><translation>Kopierte Einträge erscheinen hier.</translation></message>
</context>
<context>
    <name>QObject</name>
    <message><source>Velmorin is already running!</source><translation>Velmorin läuft bereits!</translation></message>
</context>
<context>
    <name>ReleaseNotesDialog</name>
    <message><source>What&apos;s new in Velmorin</source><translation>Neu in Velmorin</translation></message>
    <message><source>The release notes are missing from this build.</source><translation>Diesem Build fehlen die Versionshinweise.</translation></message>
</context>
<context>
    <name>SettingsDialog</name>
    <message><source>Velmorin Settings</source><translation>Velmorin-Einstellungen</translation></message>
    <message><source>General</source><translation>Allgemein</translation></message>
    <message><source>Write a debug log</source><translation>Debug-Protokoll schreiben</translation></message>
    <message><source>The debug log is written from the next start on.</source><translation>Das Debug-Protokoll wird ab dem nächsten Start geschrieben.</translation></message>
</context>
<context>
    <name>TrayIcon</name>
    <message><source>Velmorin</source><translation>Velmorin</translation></message>
    <message><source>Show</source><translation>Anzeigen</translation></message>
    <message><source>Settings</source><translation>Einstellungen</translation></message>
    <message><source>Quit</source><translation>Beenden</translation></message>
</context>
</TS>
