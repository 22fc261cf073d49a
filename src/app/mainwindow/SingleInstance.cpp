#include "mainwindow/SingleInstance.h"

#include "Logging.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

using namespace Qt::StringLiterals;

namespace {

const QString objectPath = u"/org/hourfold/Hourfold"_s;
const QString interfaceName = u"org.hourfold.Hourfold"_s;

} // namespace

SingleInstance::SingleInstance(const QString &serviceName, QObject *parent)
    : QObject(parent)
    , m_serviceName(serviceName) {}

SingleInstance::~SingleInstance() {
    if (!m_registered)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.unregisterObject(objectPath);
    bus.unregisterService(m_serviceName);
}

QString SingleInstance::defaultServiceName() {
    return u"org.hourfold.Hourfold"_s;
}

bool SingleInstance::claim() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        qCInfo(lcApp) << "no session bus; this copy runs on its own";
        return true;
    }
    const auto reply =
        bus.interface()->registerService(m_serviceName, QDBusConnectionInterface::DontQueueService,
                                         QDBusConnectionInterface::DontAllowReplacement);
    if (!reply.isValid() || reply.value() != QDBusConnectionInterface::ServiceRegistered)
        return false;
    m_registered =
        bus.registerObject(objectPath, interfaceName, this, QDBusConnection::ExportScriptableSlots);
    return true;
}

bool SingleInstance::handOver(const QStringList &files) const {
    QDBusMessage call =
        QDBusMessage::createMethodCall(m_serviceName, objectPath, interfaceName, u"Open"_s);
    call << files;
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 10000);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        qCWarning(lcApp).noquote() << "the running copy did not answer:" << reply.errorMessage();
        return false;
    }
    return true;
}

void SingleInstance::Open(const QStringList &files) {
    emit openRequested(files);
}
