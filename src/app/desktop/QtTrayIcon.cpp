#include "desktop/QtTrayIcon.h"

#include "platform/Folders.h"

#include <QIcon>
#include <QSystemTrayIcon>

using namespace Qt::StringLiterals;

QtTrayIcon::QtTrayIcon(QObject *parent)
    : TrayIcon(parent)
    , m_icon(new QSystemTrayIcon(this)) {
    QIcon picture(Folders::imagePath(u"menubar"_s));
    picture.addFile(Folders::imagePath(u"menubar_alt"_s), {}, QIcon::Selected);
    m_icon->setIcon(picture);
    connect(m_icon, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    emit clicked();
            });
}

bool QtTrayIcon::isAvailable() const {
    return QSystemTrayIcon::isSystemTrayAvailable();
}

void QtTrayIcon::show(QMenu *menu) {
    m_icon->setContextMenu(menu);
    m_icon->show();
}

void QtTrayIcon::hide() {
    m_icon->hide();
}

bool QtTrayIcon::isShown() const {
    return m_icon->isVisible();
}

void QtTrayIcon::setToolTip(const QString &text) {
    m_icon->setToolTip(text);
}
