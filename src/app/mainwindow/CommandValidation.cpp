#include "mainwindow/CommandValidation.h"

#include "model/ProjectItem.h"

using namespace Qt::StringLiterals;

bool CommandValidation::validateToolbarItem(const QString &action, const Selection &selection,
                                            const DocumentState &document) {
    if (action == u"delete:" || action == u"newTimerEntry:" || action == u"newFlatFeeEntry:" ||
        action == u"edit:")
        return selection.hasRow();
    if (action == u"save:")
        return document.changed;
    const ProjectItem *entry =
        selection.item && selection.item->isEntry() ? selection.item : nullptr;
    if (action == u"pause:")
        return selection.isProject() || (entry && entry->isWorking() && !entry->isPaused());
    // Deliberately also for finished entries: resuming one counts the gap as a pause.
    if (action == u"resume:")
        return selection.isProject() ||
               (entry && entry->hasPeriod() && (entry->isFinished() || entry->isPaused()));
    if (action == u"actionButtonClicked:")
        return entry && entry->hasPeriod() && entry->isWorking();
    return true;
}

bool CommandValidation::validateMenuItem(const QString &action, const Selection &selection,
                                         const DocumentState &document) {
    if (action == u"revert:")
        return document.changed && !document.untitled;
    return validateToolbarItem(action, selection, document);
}
