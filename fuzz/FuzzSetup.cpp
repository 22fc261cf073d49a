#include "FuzzSetup.h"

#include <QCoreApplication>
#include <QLoggingCategory>

void FuzzSetup::prepare() {
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
