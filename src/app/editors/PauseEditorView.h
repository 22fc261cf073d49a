#pragma once

#include <QWidget>

class PauseEditor;
class PauseTableModel;
class QTableView;
class QToolButton;
class UserAlerts;

// The pause editor inside the entry sheet: the table of the entry's pauses with buttons to add
// a pause (starting and ending at the entry's start, opened for typing) and to delete the
// selected one. Selecting a row draws in red the pauses it collides with.
class PauseEditorView : public QWidget {
    Q_OBJECT

public:
    PauseEditorView(PauseEditor &editor, UserAlerts &alerts, QWidget *parent = nullptr);

    QTableView *table() const { return m_table; }
    PauseTableModel *model() const { return m_model; }

    // The entry or its pauses changed.
    void refresh();
    // Whether the cell being typed in (if any) holds a moment the column can read.
    bool isEditedDateValid() const;
    // Takes over the cell being typed in; false when none was.
    bool endEditing();

    void addPauseEntry();
    void deletePauseEntry();

private:
    QWidget *openEditor() const;
    void updateButtons();

    PauseEditor &m_editor;
    PauseTableModel *m_model;
    QTableView *m_table;
    QToolButton *m_addButton;
    QToolButton *m_deleteButton;
};
