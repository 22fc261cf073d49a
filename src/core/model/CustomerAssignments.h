#pragma once

#include "Project.h"

class QUndoStack;

// What the customer store needs of the document: clearing and restoring a customer on projects,
// recomputing which projects are shown, and the document's undo stack.
class CustomerAssignments {
public:
    virtual ~CustomerAssignments() = default;
    // Sets -1 on every project with the customer and returns those projects (not undoable).
    virtual ProjectList removeCustomerFromProjects(int customerId) = 0;
    // Sets the customer on each of the projects (not undoable).
    virtual void assignCustomerToProjects(int customerId, const ProjectList &projects) = 0;
    virtual void updateVisibleProjects() = 0;
    virtual QUndoStack *undoStack() = 0;
};
