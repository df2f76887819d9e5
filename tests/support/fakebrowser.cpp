#include "fakebrowser.h"

#include <QDesktopServices>
#include <QNetworkReply>

FakeBrowser::FakeBrowser(QObject *parent) : QObject(parent) {}

FakeBrowser::~FakeBrowser()
{
    if (m_installed) {
        QDesktopServices::unsetUrlHandler(QStringLiteral("http"));
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    }
}

void FakeBrowser::install()
{
    QDesktopServices::setUrlHandler(QStringLiteral("http"), this, "open");
    QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open");
    m_installed = true;
}

void FakeBrowser::open(const QUrl &url)
{
    ++m_opened;
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    QNetworkReply *reply = m_manager.get(request);
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        reply->deleteLater();
        m_lastStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        m_lastPage = reply->readAll();
        emit pageLoaded(m_lastStatus, m_lastPage);
    });
}
