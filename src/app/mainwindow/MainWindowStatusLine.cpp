#include "mainwindow/MainWindowStatusLine.h"

#include "mainwindow/ProjectController.h"
#include "model/ProjectCollection.h"

#include <QLabel>
#include <QStatusBar>

using namespace Qt::StringLiterals;

MainWindowStatusLine::MainWindowStatusLine(ProjectCollection &collection,
                                           ProjectController &controller, QStatusBar *bar)
    : QObject(bar)
    , m_collection(collection)
    , m_info(new QLabel(bar))
    , m_saveWarning(new QLabel(bar)) {
    m_saveWarning->setObjectName(u"SaveWarning"_s);
    m_saveWarning->setVisible(false);
    m_saveWarning->setWordWrap(false);
    m_saveWarning->setStyleSheet(u"QLabel { color: palette(bright-text); background: #b3261e; "
                                 "padding: 2px 6px; border-radius: 3px; }"_s);
    m_info->setObjectName(u"StatusInfo"_s);
    bar->addWidget(m_saveWarning, 1);
    bar->addPermanentWidget(m_info);
    connect(&controller, &ProjectController::statusMessage, bar,
            [bar](const QString &message) { bar->showMessage(message, 15000); });
    connect(&controller, &ProjectController::saveWarningChanged, this,
            [this](const QString &warning) {
                m_saveWarning->setText(warning);
                m_saveWarning->setToolTip(warning);
                m_saveWarning->setVisible(!warning.isEmpty());
            });
}

void MainWindowStatusLine::updateInfo() {
    m_info->setText(m_collection.statusBarInfo().replace(u'\t', u"    "_s));
}
