#include "common/TagCompleter.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QStringListModel>

TagCompleter::TagCompleter(QLineEdit *field, TagStorage &tags, TagStorage::Panel panel)
    : QObject(field)
    , m_field(field)
    , m_tags(tags)
    , m_model(new QStringListModel(this))
    , m_completer(new QCompleter(m_model, this)) {
    // The model holds exactly the tag store's completions, so the completer shows it unfiltered.
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setCaseSensitivity(Qt::CaseSensitive);
    m_completer->setWidget(field);
    connect(field, &QLineEdit::textEdited, this, &TagCompleter::textEdited);
    connect(m_completer, qOverload<const QString &>(&QCompleter::activated), this,
            &TagCompleter::insertCompletion);
    connect(field, &QLineEdit::editingFinished, this, [this, panel] {
        // Choosing a completion in the pop-up takes the focus for a moment; that is no end.
        if (!m_completer->popup()->isVisible())
            m_tags.controlTextDidEndEditing(panel, m_field->text());
    });
}

int TagCompleter::tokenStart() const {
    const QString before = m_field->text().left(m_field->cursorPosition());
    return int(before.lastIndexOf(u',')) + 1;
}

int TagCompleter::tokenEnd() const {
    const qsizetype comma = m_field->text().indexOf(u',', m_field->cursorPosition());
    return int(comma < 0 ? m_field->text().size() : comma);
}

void TagCompleter::textEdited() {
    const int start = tokenStart();
    const QString typed = m_field->text().mid(start, m_field->cursorPosition() - start);
    const QStringList names =
        typed.isEmpty() ? QStringList() : m_tags.completionsForSubstring(typed);
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
    QString text = m_field->text();
    text.replace(start, tokenEnd() - start, name);
    m_field->setText(text);
    m_field->setCursorPosition(start + int(name.size()));
}
