#pragma once

#include "model/Project.h"
#include "platform/CurrencyFormatter.h"

#include <QMainWindow>

class QTreeWidget;
class QLabel;

// A read-only view of a project file: one row per project with its entry count, total duration
// and total wages, and a status line with the sums.
class ProjectTotalsWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit ProjectTotalsWindow(QWidget *parent = nullptr);

    // Reads the file and shows its projects; on failure, says why and keeps what was shown.
    bool openFile(const QString &path);
    QTreeWidget *projectTree() const { return m_tree; }

private:
    void chooseFile();
    void showProjects();

    QTreeWidget *m_tree;
    QLabel *m_summary;
    ProjectList m_projects;
    CurrencyFormatter m_currency;
};
