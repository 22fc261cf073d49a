#pragma once

#include "stores/TagStorage.h"

#include <QObject>
#include <QPointer>
#include <functional>

class QCompleter;
class QLineEdit;
class QStringListModel;
class TokenField;

// Completion in a tag field: the name being typed (after the last "," before the cursor) is
// completed from the known tags that start with it (case-sensitive), and choosing one replaces
// that whole name. The field is its panel's tag field for the tag list: when any tag field ends
// editing, the first panel shown decides what the list takes (TagStorage::tagFieldDidEndEditing).
// A panel that closes while its field has the focus ends that editing as it goes, still shown.
class TagCompleter : public QObject {
    Q_OBJECT

public:
    // The panel is the sheet or window the field belongs to.
    TagCompleter(QLineEdit *field, TagStorage &tags, TagStorage::Panel panel);
    TagCompleter(TokenField *field, TagStorage &tags, TagStorage::Panel panel);
    ~TagCompleter() override;

    QCompleter *completer() const { return m_completer; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // How the completer reads and changes its field.
    struct Access {
        std::function<QString()> text;
        std::function<int()> cursorPosition;
        // The new text and where the cursor goes in it.
        std::function<void(const QString &, int)> setText;
    };

    // Reads and changes a line edit or a token field, which share these members.
    template <typename Field> static Access accessTo(Field *field);

    TagCompleter(QWidget *field, TagStorage &tags, TagStorage::Panel panel, Access access);
    void textEdited();
    void editingFinished();
    void insertCompletion(const QString &name);
    // Where the name at the cursor starts, and where it ends (the next "," or the end).
    int tokenStart() const;
    int tokenEnd() const;

    QWidget *m_field;
    Access m_access;
    QPointer<TagStorage> m_tags;
    QStringListModel *m_model;
    QCompleter *m_completer;
    bool m_closing = false;
};
