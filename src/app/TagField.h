#pragma once

#include "stores/TagStorage.h"

#include <QLineEdit>

class QCompleter;
class QStringListModel;

// The tag field of an editor: tag names separated by ",", the name being typed completed from
// the known tags (those that start with it, case-sensitive, in the tag list's order). When
// editing ends, the field's names are added to the tag list as the panel's field.
class TagField : public QLineEdit {
    Q_OBJECT

public:
    TagField(TagStorage *storage, TagStorage::Panel panel, QWidget *parent = nullptr);

    QCompleter *completer() const { return m_completer; }
    // The name being typed: everything after the last ",".
    static QString lastName(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void offerCompletions(const QString &text);
    void insertCompletion(const QString &name);

    TagStorage *m_storage;
    QCompleter *m_completer;
    QStringListModel *m_names;
};
