#pragma once

#include "stores/TagStorage.h"

#include <QObject>

class QCompleter;
class QLineEdit;
class QStringListModel;

// Completion in a tag field: the name being typed (after the last "," before the cursor) is
// completed from the known tags that start with it (case-sensitive), and choosing one replaces
// just that name. When the field ends editing, its names join the known tags.
class TagCompleter : public QObject {
    Q_OBJECT

public:
    // The panel is the sheet the field belongs to.
    TagCompleter(QLineEdit *field, TagStorage &tags, TagStorage::Panel panel);

    QCompleter *completer() const { return m_completer; }

private:
    void textEdited();
    void insertCompletion(const QString &name);
    // Where the name being typed starts.
    int tokenStart() const;

    QLineEdit *m_field;
    TagStorage &m_tags;
    QStringListModel *m_model;
    QCompleter *m_completer;
};
