#include "ProjectTotalsWindow.h"

#include "model/EntrySort.h"
#include "model/ProjectFile.h"
#include "model/StoredForms.h"
#include "platform/Preferences.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTreeWidget>

ProjectTotalsWindow::ProjectTotalsWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_tree(new QTreeWidget(this))
    , m_summary(new QLabel(this)) {
    setWindowTitle(tr("Hourfold"));
    m_tree->setColumnCount(4);
    m_tree->setHeaderLabels(
        {tr("Project"), tr("Entries"), tr("Total duration"), tr("Total wages")});
    m_tree->setRootIsDecorated(false);
    m_tree->setAlternatingRowColors(true);
    m_tree->setSortingEnabled(false);
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    for (int column = 1; column < 4; ++column) {
        m_tree->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
        m_tree->headerItem()->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    setCentralWidget(m_tree);
    statusBar()->addWidget(m_summary, 1);

    QMenu *fileMenu = menuBar()->addMenu(tr("&File"));
    fileMenu->addAction(tr("&Open…"), QKeySequence::Open, this, &ProjectTotalsWindow::chooseFile);
    fileMenu->addSeparator();
    fileMenu->addAction(tr("&Quit"), QKeySequence::Quit, qApp, &QApplication::quit);

    resize(720, 420);
    showProjects();
}

void ProjectTotalsWindow::chooseFile() {
    const QString start = Preferences::shared().stringForKey(u"StartingDirectory");
    const QString path = QFileDialog::getOpenFileName(this, tr("Open"), start,
                                                      tr("Hourfold files (*.xml);;All files (*)"));
    if (!path.isEmpty())
        openFile(path);
}

bool ProjectTotalsWindow::openFile(const QString &path) {
    ProjectFile::LoadResult result = ProjectFile::load(path);
    if (!result.ok) {
        QMessageBox box(QMessageBox::Critical, tr("Could not open the file."), result.error,
                        QMessageBox::Ok, this);
        box.setWindowModality(Qt::WindowModal);
        box.exec();
        return false;
    }
    if (result.recovered) {
        const QString kept = result.backupPath.isEmpty()
                                 ? tr("No copy of the original could be kept: %1").arg(result.error)
                                 : tr("The original was kept as %1.").arg(result.backupPath);
        QMessageBox::warning(this, tr("The file was damaged and has been repaired."), kept);
    }
    const bool ascending = Preferences::shared().boolForKey(u"sortAscending");
    const QString column = Preferences::shared().stringForKey(u"sortingColumn");
    for (const auto &project : std::as_const(result.projects)) {
        ItemList items = project->entries();
        EntrySort::sortEntries(items, column, ascending);
        project->setEntries(items);
        project->setCurrencyFormatter(&m_currency);
    }
    m_projects = result.projects;
    setWindowTitle(QFileInfo(path).fileName() + QStringLiteral(" — Hourfold"));
    showProjects();
    return true;
}

void ProjectTotalsWindow::showProjects() {
    m_tree->clear();
    int totalMinutes = 0;
    double totalWages = 0;
    for (const auto &project : std::as_const(m_projects)) {
        auto *row = new QTreeWidgetItem(m_tree);
        row->setText(0, project->name());
        row->setText(1, QString::number(project->entries().size()));
        row->setText(2, project->formattedTotalTime(true));
        row->setText(3, project->formattedTotalWages());
        for (int column = 1; column < 4; ++column)
            row->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
        totalMinutes += project->totalDuration();
        totalWages += project->totalWages();
    }
    if (m_projects.isEmpty()) {
        m_summary->setText(tr("No file open. Choose File ▸ Open or give a project file on the "
                              "command line."));
        return;
    }
    m_summary->setText(tr("%1: %2\t%3: %4")
                           .arg(tr("Total duration"), StoredForms::durationText(totalMinutes),
                                tr("Total wages"), m_currency.format(totalWages)));
}
