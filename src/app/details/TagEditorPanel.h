#pragma once

#include <QWidget>

class TagStorage;
class TokenField;

// The tag editor: every known tag name as a token, in list order, in a field that wraps over as
// many lines as the panel's width needs, with completion like the sheets' tag fields. When the
// field ends editing (Return, leaving the window, closing it) the first panel shown decides: with
// no sheet open the tag list becomes exactly the field's names (an empty field leaves one empty
// name); a sheet opened meanwhile adds its own field's names instead. Records keep their tags
// whatever the list holds. Parented to the main window it is blocked, like the main window, while
// a sheet is open there.
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
    TokenField *m_field;
};
