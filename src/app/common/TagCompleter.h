#pragma once

#include "stores/TagStorage.h"

#include <QObject>

class QCompleter;
class QLineEdit;
class QStringListModel;

// Completion in a tag field: the name being typed (after the last "," before the cursor) is
// completed from the known tags that start with it (case-sensitive), and choosing one replaces
// that whole name. When the field ends editing, the tag list takes its names by the rule of the
// field's panel: the sheets add them, the tag editor replaces the list with them.
class TagCompleter : public QObject {
    Q_OBJECT

public:
    // The panel is the sheet or window the field belongs to.
    TagCompleter(QLineEdit *field, TagStorage &tags, TagStorage::Panel panel);

    QCompleter *completer() const { return m_completer; }

private:
    void textEdited();
    void insertCompletion(const QString &name);
    // Where the name at the cursor starts, and where it ends (the next "," or the end).
    int tokenStart() const;
    int tokenEnd() const;

    QLineEdit *m_field;
    TagStorage &m_tags;
    QStringListModel *m_model;
    QCompleter *m_completer;
};
