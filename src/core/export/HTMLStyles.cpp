#include "HTMLStyles.h"

#include "../model/HelpFunctions.h"
#include "../platform/Folders.h"

#include <QDir>

using namespace Qt::StringLiterals;

QList<HTMLStyles::Style> HTMLStyles::stylesIn(const QString &folder, bool foldersOnly) {
    QList<Style> styles;
    const QDir dir(folder);
    const auto filters = foldersOnly ? QDir::Dirs | QDir::NoDotAndDotDot
                                     : QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot;
    for (const QFileInfo &info : dir.entryInfoList(filters, QDir::Name)) {
        if (info.fileName().contains(u".hfstyle"))
            styles.append({info.absoluteFilePath(), info.fileName()});
    }
    return styles;
}

QString HTMLStyles::userStylesFolder() {
    return HelpFunctions::applicationSupportFolder() + u"/Styles";
}

QList<HTMLStyles::Style> HTMLStyles::availableStyles() {
    return stylesIn(Folders::resourceFolder() + u"/Styles", false) +
           stylesIn(userStylesFolder(), true);
}
