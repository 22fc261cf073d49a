#pragma once

#include <QWidget>

class QLineEdit;
class TagStorage;

// The tag editor: every known tag name in one line, in list order and separated by ",", with
// completion like the sheets' tag fields. When the line ends editing (Return, leaving the window,
// closing it) the tag list becomes exactly its names; an empty line leaves one empty name. Records
// keep their tags whatever the list holds. Parented to the main window it is blocked, like the
// main window, while a sheet is open there, so no other tag field is being edited meanwhile.
class TagEditorPanel : public QWidget {
    Q_OBJECT

public:
    TagEditorPanel(TagStorage &tags, QWidget *parent = nullptr);
    ~TagEditorPanel() override;

    // Shows the current list and brings the window to the front.
    void openTagsEditor();

private:
    void updateEditorTokenField();

    TagStorage &m_tags;
    QLineEdit *m_field;
};
