#include "common/TagCompleter.h"

#include "common/TokenField.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QEvent>
#include <QLineEdit>
#include <QStringListModel>

template <typename Field> TagCompleter::Access TagCompleter::accessTo(Field *field) {
    return {[field] { return field->text(); }, [field] { return field->cursorPosition(); },
            [field](const QString &text, int cursor) {
                field->setText(text);
                field->setCursorPosition(cursor);
            }};
}

TagCompleter::TagCompleter(QLineEdit *field, TagStorage &tags, TagStorage::Panel panel)
    : TagCompleter(field, tags, panel, accessTo(field)) {
    connect(field, &QLineEdit::textEdited, this, &TagCompleter::textEdited);
    connect(field, &QLineEdit::editingFinished, this, &TagCompleter::editingFinished);
}

TagCompleter::TagCompleter(TokenField *field, TagStorage &tags, TagStorage::Panel panel)
    : TagCompleter(field, tags, panel, accessTo(field)) {
    connect(field, &TokenField::textEdited, this, &TagCompleter::textEdited);
    connect(field, &TokenField::editingFinished, this, &TagCompleter::editingFinished);
}

TagCompleter::TagCompleter(QWidget *field, TagStorage &tags, TagStorage::Panel panel, Access access)
    : QObject(field)
    , m_field(field)
    , m_access(std::move(access))
    , m_tags(&tags)
    , m_model(new QStringListModel(this))
    , m_completer(new QCompleter(m_model, this)) {
    // The model holds exactly the tag store's completions, so the completer shows it unfiltered.
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setCaseSensitivity(Qt::CaseSensitive);
    m_completer->setWidget(field);
    connect(m_completer, qOverload<const QString &>(&QCompleter::activated), this,
            &TagCompleter::insertCompletion);
    tags.setPanelField(
        panel, this,
        {[this] { return m_closing || m_field->window()->isVisible(); }, m_access.text});
    field->installEventFilter(this);
}

TagCompleter::~TagCompleter() {
    if (m_tags)
        m_tags->removePanelField(this);
}

bool TagCompleter::eventFilter(QObject *watched, QEvent *event) {
    // The window takes the focus away only after it is hidden: the field lets go of it here.
    if (watched == m_field && event->type() == QEvent::Hide && m_field->hasFocus()) {
        m_closing = true;
        m_field->clearFocus();
        m_closing = false;
    }
    return QObject::eventFilter(watched, event);
}

void TagCompleter::editingFinished() {
    // Choosing a completion in the pop-up takes the focus for a moment; that is no end.
    if (m_tags && !m_completer->popup()->isVisible())
        m_tags->tagFieldDidEndEditing();
}

int TagCompleter::tokenStart() const {
    const QString before = m_access.text().left(m_access.cursorPosition());
    return int(before.lastIndexOf(u',')) + 1;
}

int TagCompleter::tokenEnd() const {
    const QString text = m_access.text();
    const qsizetype comma = text.indexOf(u',', m_access.cursorPosition());
    return int(comma < 0 ? text.size() : comma);
}

void TagCompleter::textEdited() {
    const int start = tokenStart();
    const QString typed = m_access.text().mid(start, m_access.cursorPosition() - start);
    const QStringList names =
        typed.isEmpty() || !m_tags ? QStringList() : m_tags->completionsForSubstring(typed);
    m_model->setStringList(names);
    // A name typed out in full needs no list.
    if (names.isEmpty() || names == QStringList{typed}) {
        m_completer->popup()->hide();
        return;
    }
    m_completer->complete();
}

void TagCompleter::insertCompletion(const QString &name) {
    const int start = tokenStart();
    QString text = m_access.text();
    text.replace(start, tokenEnd() - start, name);
    m_access.setText(text, start + int(name.size()));
}
