#include "WebEngineSetup.h"

#include <QCoreApplication>
#include <QList>

#include <unistd.h>

namespace {

void addChromiumFlag(const QByteArray &flag) {
    const char *name = "QTWEBENGINE_CHROMIUM_FLAGS";
    QByteArray flags = qgetenv(name);
    if (flags.split(' ').contains(flag))
        return;
    if (!flags.isEmpty())
        flags += ' ';
    qputenv(name, flags + flag);
}

} // namespace

void WebEngineSetup::prepareProcess() {
    if (geteuid() == 0 && !qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    if (qgetenv("QT_QPA_PLATFORM").startsWith("offscreen"))
        addChromiumFlag("--disable-gpu");
    // Qt WebEngine shares its OpenGL context with the application's; this must be said before
    // the application object is created.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
}
