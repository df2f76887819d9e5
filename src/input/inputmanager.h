#pragma once

#include "clipboard/pastetext.h"

#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVariant>

#include <functional>

class IDesktop;
class QTimer;

// Watches what the user types anywhere on the desktop, through the platform's keyboard and
// mouse hooks, and keeps the word typed so far for keyword expansion.
class InputManager final : public QObject
{
    Q_OBJECT

public:
    // How long typing must rest before a matched keyword is replaced. Keys typed in between go
    // into the replacement, not among the keys the expansion sends.
    static constexpr int TypingPause = 150;

    explicit InputManager(IDesktop *desktop, QObject *parent = nullptr);

    // Makes the text that replaces a keyword: the snippet text resolved for the application.
    using Resolver =
        std::function<PasteText(const QString &snippetText, const QString &application)>;
    void setResolver(Resolver resolver) { m_resolver = std::move(resolver); }

    void installHooks();
    // True when no keyboard hook remains.
    bool removeHooks();
    // Re-reads the applications that never expand keywords, the expansion delays and whether
    // a keyword needs a space after it.
    void loadSettings();

    QString typedWord() const { return m_typedWord; }
    QMap<QString, QString> keywords() const { return m_keywords; }
    void setKeywords(const QMap<QString, QString> &keywords) { m_keywords = keywords; }
    QMap<QString, QVariant> delayedApplications() const { return m_delayedApplications; }
    QSet<QString> noExpandApplications() const { return m_noExpandApplications; }
    bool requireSpace() const { return m_requireSpace; }

    // What a pressed key means for the typed word; called for each key the hook reports.
    void classifyKey(quint32 virtualKey, const QString &text);

    // A matched keyword waits for typing to rest (or for the application's delay).
    bool isExpansionPending() const { return m_pending.erase > 0; }

signals:
    void keywordBreakerTyped();
    void backspaceTyped();
    void characterTyped(QChar character);
    // An action named in a snippet failed; message is for the user.
    void actionFailed(const QString &message);

public slots:
    void onCharacterTyped(QChar character);

private:
    // A matched keyword waiting for typing to rest, with whatever was typed after it (and any
    // further keyword matched meanwhile): what to erase in the application and what replaces
    // it.
    struct PendingExpansion
    {
        int erase = 0;
        QString text;
        ClipboardOps::CursorSteps steps{-1, 0};
        int typedAfter = 0; // characters typed after the last snippet
        bool dropOnTyping = false;
        QStringList failures;
    };

    void queueExpansion(int backspaces, const QString &snippetText, const QString &application,
                        int delay);
    void followPendingExpansion(quint32 virtualKey, const QString &text);
    void dropPendingExpansion(const char *why);
    void finishPendingExpansion();
    // Erases what was typed and pastes the text in its place, the caret put where the steps
    // say; the clipboard comes back afterwards.
    void sendExpansion(int backspaces, const QString &text, ClipboardOps::CursorSteps steps);

    void installHook(int hook, const char *installed, const char *failed);
    void removeHook(int hook, const char *removed, const char *failed);

    QString m_typedWord;
    QMap<QString, QString> m_keywords;
    QMap<QString, QVariant> m_delayedApplications;
    QSet<QString> m_noExpandApplications;
    bool m_requireSpace = false;
    IDesktop *m_desktop;
    Resolver m_resolver;
    PendingExpansion m_pending;
    QTimer *m_pause;
};
