#include "TagField.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QStringListModel>

TagField::TagField(TagStorage *storage, TagStorage::Panel panel, QWidget *parent)
    : QLineEdit(parent)
    , m_storage(storage)
    , m_completer(new QCompleter(this))
    , m_names(new QStringListModel(this)) {
    // The candidates are chosen here, by the tag list's rule; the completer only shows them.
    m_completer->setModel(m_names);
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setCaseSensitivity(Qt::CaseSensitive);
    m_completer->setWidget(this);
    connect(m_completer, qOverload<const QString &>(&QCompleter::activated), this,
            &TagField::insertCompletion);
    connect(this, &QLineEdit::textEdited, this, &TagField::offerCompletions);
    connect(this, &QLineEdit::editingFinished, this, [this, panel] {
        if (m_storage)
            m_storage->controlTextDidEndEditing(panel, text());
    });
}

QString TagField::lastName(const QString &text) {
    return text.mid(text.lastIndexOf(u',') + 1);
}

void TagField::offerCompletions(const QString &text) {
    const QString typed = lastName(text);
    const QStringList names =
        m_storage && !typed.isEmpty() ? m_storage->completionsForSubstring(typed) : QStringList();
    if (names.isEmpty() || (names.size() == 1 && names.constFirst() == typed)) {
        m_completer->popup()->hide();
        return;
    }
    m_names->setStringList(names);
    m_completer->complete();
}

void TagField::insertCompletion(const QString &name) {
    // Typed over the name, so that the field counts as edited.
    const qsizetype start = text().lastIndexOf(u',') + 1;
    setSelection(int(start), int(text().size() - start));
    insert(name);
}

void TagField::keyPressEvent(QKeyEvent *event) {
    // While the list is open, its keys choose from it.
    if (m_completer->popup()->isVisible()) {
        switch (event->key()) {
        case Qt::Key_Enter:
        case Qt::Key_Return:
        case Qt::Key_Escape:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            event->ignore();
            return;
        default:
            break;
        }
    }
    QLineEdit::keyPressEvent(event);
}
