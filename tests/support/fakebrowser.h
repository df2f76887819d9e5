#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QObject>
#include <QUrl>

// A browser for the sign-in tests: it opens a page and follows its redirects to the end, as a
// user's browser does when the consent page sends it back to the application.
class FakeBrowser final : public QObject
{
    Q_OBJECT

public:
    explicit FakeBrowser(QObject *parent = nullptr);
    ~FakeBrowser() override;

    // Becomes the desktop's handler of http and https links in this process.
    void install();

    int pagesOpened() const { return m_opened; }
    int lastStatus() const { return m_lastStatus; }
    QByteArray lastPage() const { return m_lastPage; }

public slots:
    void open(const QUrl &url);

signals:
    void pageLoaded(int status, const QByteArray &body);

private:
    QNetworkAccessManager m_manager;
    int m_opened = 0;
    int m_lastStatus = 0;
    QByteArray m_lastPage;
    bool m_installed = false;
};
