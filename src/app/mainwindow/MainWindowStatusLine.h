#pragma once

#include <QObject>

class ProjectCollection;
class ProjectController;
class QLabel;
class QStatusBar;

// The main window's status line: the totals of what the list shows on the right, a warning that
// stays while the document could not be saved, and passing messages of the controller.
class MainWindowStatusLine : public QObject {
    Q_OBJECT

public:
    MainWindowStatusLine(ProjectCollection &collection, ProjectController &controller,
                         QStatusBar *bar);

    QLabel *infoLabel() const { return m_info; }
    QLabel *saveWarningLabel() const { return m_saveWarning; }
    // Shows the totals of the document as it is now.
    void updateInfo();

private:
    ProjectCollection &m_collection;
    QLabel *m_info;
    QLabel *m_saveWarning;
};
