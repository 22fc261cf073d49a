#include "common/TokenField.h"

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QtMath>

namespace {

// The invisible break opportunity kept after each "," (a zero-width space).
constexpr QChar lineBreak = QChar(0x200B);

QString withBreaks(QString text) {
    text.replace(u',', QStringLiteral(",\u200B"));
    return text;
}

} // namespace

TokenField::TokenField(QWidget *parent)
    : QTextEdit(parent) {
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setLineWrapMode(QTextEdit::WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(document(), &QTextDocument::contentsChanged, this, &TokenField::contentsChanged);
    connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &TokenField::updateHeight);
    updateHeight();
}

QString TokenField::text() const {
    return toPlainText().remove(lineBreak);
}

void TokenField::setText(const QString &text) {
    m_changing = true;
    setPlainText(withBreaks(text));
    moveCursor(QTextCursor::End);
    m_changing = false;
    m_edited = false;
}

int TokenField::cursorPosition() const {
    const int position = textCursor().position();
    return position - int(toPlainText().left(position).count(lineBreak));
}

void TokenField::setCursorPosition(int position) {
    const QString shown = toPlainText();
    int at = 0;
    for (int seen = 0; at < shown.size() && (seen < position || shown[at] == lineBreak); ++at) {
        if (shown[at] != lineBreak)
            ++seen;
    }
    QTextCursor cursor = textCursor();
    cursor.setPosition(at);
    setTextCursor(cursor);
}

int TokenField::contentHeight() const {
    return qCeil(document()->size().height()) + 2 * frameWidth();
}

QList<QRectF> TokenField::tokenRects() const {
    QList<QRectF> rects;
    const QPointF scrolled(-horizontalScrollBar()->value(), -verticalScrollBar()->value());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        const QTextLayout *layout = block.layout();
        const QPointF origin =
            document()->documentLayout()->blockBoundingRect(block).topLeft() + scrolled;
        const QString text = block.text();
        for (qsizetype from = 0; from <= text.size();) {
            qsizetype to = text.indexOf(u',', from);
            if (to < 0)
                to = text.size();
            for (int i = 0; i < layout->lineCount() && to > from; ++i) {
                const QTextLine line = layout->lineAt(i);
                const int start = std::max(int(from), line.textStart());
                const int end = std::min(int(to), line.textStart() + line.textLength());
                if (start >= end)
                    continue;
                const qreal left = line.cursorToX(start);
                rects.append(QRectF(origin.x() + left, origin.y() + line.y(),
                                    line.cursorToX(end) - left, line.height())
                                 .adjusted(-2, 0.5, 2, -0.5));
            }
            from = to + 1;
            if (from < text.size() && text[from] == lineBreak)
                ++from;
        }
    }
    return rects;
}

void TokenField::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        finishEditing();
        event->ignore();
        return;
    case Qt::Key_Backspace:
        // Back over a "," takes the "," itself.
        if (!textCursor().hasSelection() && textCursor().position() > 0 &&
            toPlainText().at(textCursor().position() - 1) == lineBreak)
            moveCursor(QTextCursor::PreviousCharacter);
        break;
    default:
        break;
    }
    QTextEdit::keyPressEvent(event);
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right ||
        event->key() == Qt::Key_Delete) {
        // The cursor never rests between a "," and its break.
        const QString shown = toPlainText();
        const int at = textCursor().position();
        if (at < shown.size() && shown[at] == lineBreak) {
            QTextCursor cursor = textCursor();
            cursor.movePosition(event->key() == Qt::Key_Left ? QTextCursor::PreviousCharacter
                                                             : QTextCursor::NextCharacter,
                                event->modifiers() & Qt::ShiftModifier ? QTextCursor::KeepAnchor
                                                                       : QTextCursor::MoveAnchor);
            setTextCursor(cursor);
        }
    }
}

void TokenField::focusOutEvent(QFocusEvent *event) {
    QTextEdit::focusOutEvent(event);
    if (m_edited && event->reason() != Qt::PopupFocusReason)
        finishEditing();
}

void TokenField::paintEvent(QPaintEvent *event) {
    {
        QPainter painter(viewport());
        painter.setRenderHint(QPainter::Antialiasing);
        QColor fill = palette().color(QPalette::Highlight);
        QColor border = fill;
        fill.setAlphaF(0.15f);
        border.setAlphaF(0.6f);
        painter.setPen(QPen(border, 1));
        painter.setBrush(fill);
        for (const QRectF &rect : tokenRects())
            painter.drawRoundedRect(rect, 4, 4);
    }
    QTextEdit::paintEvent(event);
}

void TokenField::resizeEvent(QResizeEvent *event) {
    QTextEdit::resizeEvent(event);
    updateHeight();
}

void TokenField::insertFromMimeData(const QMimeData *source) {
    // Names pasted one per line become names separated by ",".
    static const QRegularExpression lineEnds(QStringLiteral("[\r\n]+"));
    insertPlainText(source->text().replace(lineEnds, QStringLiteral(",")));
}

void TokenField::contentsChanged() {
    if (m_changing)
        return;
    placeBreaks();
    m_edited = true;
    emit textEdited(text());
}

void TokenField::placeBreaks() {
    const QString shown = toPlainText();
    if (shown == withBreaks(text()))
        return;
    m_changing = true;
    QTextCursor cursor(document());
    cursor.joinPreviousEditBlock();
    for (qsizetype at = shown.size() - 1; at >= 0; --at) {
        if (shown[at] == lineBreak && (at == 0 || shown[at - 1] != u',')) {
            cursor.setPosition(int(at));
            cursor.deleteChar();
        } else if (shown[at] == u',' && (at + 1 == shown.size() || shown[at + 1] != lineBreak)) {
            cursor.setPosition(int(at) + 1);
            cursor.insertText(QString(lineBreak));
        }
    }
    cursor.endEditBlock();
    m_changing = false;
}

void TokenField::finishEditing() {
    m_edited = false;
    emit editingFinished();
}

void TokenField::updateHeight() {
    const int height = contentHeight();
    if (height != this->height() || minimumHeight() != height)
        setFixedHeight(height);
}
