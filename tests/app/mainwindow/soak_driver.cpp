// The desktop program's main window on a project file, changing the document without end: a
// timer started, then a typed entry added, over and over, each change saved at once by crash
// protection, the next change made as soon as the last one is on disk. After every save it prints
// "saved" and the number of items, so that the crash campaign can kill it at moments of its
// choosing. Arguments: the project file and the preferences file.

#include "support/ScriptedUser.h"

#include "mainwindow/MainWindow.h"
#include "model/Entry.h"
#include "model/ProjectCollection.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Preferences.h"
#include "stores/CustomerStorage.h"
#include "stores/TagStorage.h"

#include <QApplication>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

int main(int argc, char *argv[]) {
    QApplication app(argc, argv);
    if (argc != 3) {
        std::fputs("usage: hourfold-soak-driver PROJECT-FILE PREFERENCES-FILE\n", stderr);
        return 1;
    }
    const QString file = QString::fromLocal8Bit(argv[1]);
    const QString folder = QFileInfo(QString::fromLocal8Bit(argv[2])).absolutePath();
    Preferences preferences(QString::fromLocal8Bit(argv[2]));
    Preferences::setShared(&preferences);
    preferences.setObject(false, u"showInfo");
    preferences.setObject(1, u"crashProtection");
    preferences.setObject(file, u"LastOpenFile");
    ProjectCollection collection(preferences);
    CurrencyFormatter currency(u"en_US"_s);
    collection.setCurrencyFormatter(&currency);
    CustomerStorage customers(folder + u"/customers.plist"_s, collection, preferences);
    collection.setCustomerDirectory(&customers);
    TagStorage tags(folder + u"/tags.plist"_s);
    ScriptedUser user;
    MainWindow window({preferences, collection, customers, tags, currency, user, user, user,
                       folder + u"/filters.plist"_s, folder + u"/quickfilters.plist"_s});
    window.show();
    window.startUp();
    if (collection.projectArray().isEmpty()) {
        std::fputs("hourfold-soak-driver: the project file has no project\n", stderr);
        return 1;
    }
    int round = 0;
    QTimer changes;
    changes.setSingleShot(true);
    QObject::connect(&collection, &ProjectCollection::saved, [&collection, &changes] {
        std::printf("saved %lld\n",
                    static_cast<long long>(collection.projectArray().first()->entries().size()));
        std::fflush(stdout);
        changes.start(0);
    });
    QObject::connect(&changes, &QTimer::timeout, [&] {
        const auto project = collection.projectArray().first();
        if (round++ % 2 == 0) {
            collection.startTimerInProject(project);
            return;
        }
        auto entry = std::make_shared<Entry>();
        entry->setDate(u"25.11.2026"_s);
        entry->setTime(round);
        entry->setComment(u"change %1"_s.arg(round));
        collection.addEntry(entry, project, u"Add"_s);
    });
    changes.start(0);
    return app.exec();
}
