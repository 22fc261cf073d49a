#pragma once

#include <QString>

class Project;
class ProjectItem;

// Which toolbar items and menu commands are enabled, by their action and the selected row.
class CommandValidation {
public:
    // What the selected row of the list is; no row when both are null.
    struct Selection {
        const Project *project = nullptr;
        const ProjectItem *item = nullptr;
        bool hasRow() const { return project || item; }
        bool isProject() const { return project && !item; }
    };

    struct DocumentState {
        bool changed = false;
        bool untitled = true;
    };

    // The toolbar's rule for the action.
    static bool validateToolbarItem(const QString &action, const Selection &selection,
                                    const DocumentState &document);
    // The menu's rule: the toolbar's, and Revert only for a changed document that has a file.
    static bool validateMenuItem(const QString &action, const Selection &selection,
                                 const DocumentState &document);
};
