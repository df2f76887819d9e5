#pragma once

#include <QMap>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVariant>

class IDesktop;

// Watches what the user types anywhere on the desktop, through the platform's keyboard and
// mouse hooks, and keeps the word typed so far for keyword expansion. One per process.
class InputManager final : public QObject
{
    Q_OBJECT

public:
    static InputManager *instance();

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

    // Erases the typed keyword and pastes the snippet's text in its place, placeholders
    // resolved and the caret where the text marks it; the clipboard comes back afterwards.
    void expandKeyword(int backspaces, const QString &snippetText, const QString &application);

signals:
    void keywordBreakerTyped();
    void backspaceTyped();
    void characterTyped(QChar character);
    // An action named in a snippet failed; message is for the user.
    void actionFailed(const QString &message);

public slots:
    void onCharacterTyped(QChar character);

private:
    explicit InputManager(IDesktop *desktop);

    void installHook(int hook, const char *installed, const char *failed);
    void removeHook(int hook, const char *removed, const char *failed);

    QString m_typedWord;
    QMap<QString, QString> m_keywords;
    QMap<QString, QVariant> m_delayedApplications;
    QSet<QString> m_noExpandApplications;
    bool m_requireSpace = false;
    IDesktop *m_desktop;
};
