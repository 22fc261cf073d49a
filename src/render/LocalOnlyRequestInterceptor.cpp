#include "LocalOnlyRequestInterceptor.h"

#include <QUrl>

void LocalOnlyRequestInterceptor::interceptRequest(QWebEngineUrlRequestInfo &info) {
    const QString scheme = info.requestUrl().scheme();
    if (scheme == QLatin1String("file") || scheme == QLatin1String("data"))
        return;
    info.block(true);
    ++m_blocked;
}
