#include "editors/SheetTextEdit.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

SheetTextEdit::SheetTextEdit(QWidget *parent)
    : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
}

QSize SheetTextEdit::sizeHint() const {
    // Four lines.
    const int frame = 2 * frameWidth() + int(2 * document()->documentMargin());
    return {QPlainTextEdit::sizeHint().width(), 4 * fontMetrics().lineSpacing() + frame};
}

void SheetTextEdit::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (event->modifiers() & Qt::ShiftModifier) {
            insertPlainText(u"\n"_s);
            return;
        }
        event->ignore();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}
