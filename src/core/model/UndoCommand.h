#pragma once

#include <QUndoCommand>
#include <functional>

// One undoable change of the document: what it does and what takes it back, under the action
// name the Edit menu shows ("Add Project", "Delete customer", ...). Pushing it onto a QUndoStack
// performs it.
class UndoCommand : public QUndoCommand {
public:
    UndoCommand(const QString &actionName, std::function<void()> perform,
                std::function<void()> revert, QUndoCommand *parent = nullptr)
        : QUndoCommand(actionName, parent)
        , m_perform(std::move(perform))
        , m_revert(std::move(revert)) {}

    void redo() override {
        if (m_perform)
            m_perform();
    }
    void undo() override {
        if (m_revert)
            m_revert();
    }

private:
    std::function<void()> m_perform;
    std::function<void()> m_revert;
};
