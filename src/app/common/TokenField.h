#pragma once

#include <QTextEdit>

// A text field for names separated by ",", each name drawn as a token (a rounded box), that wraps
// between names over as many lines as its width needs and grows in height with them. The text is
// kept exactly as typed (blanks and empty names too); only the drawing sets the names apart. Lines
// break only after a ",", for which the field keeps an invisible break opportunity after each one
// in its document; text(), the cursor position and the signals know nothing of it.
//
// Like a line edit it ends editing on Return and when it loses the focus after a change (not to a
// pop-up such as a completion list), and reports the user's changes with textEdited().
class TokenField : public QTextEdit {
    Q_OBJECT

public:
    explicit TokenField(QWidget *parent = nullptr);

    QString text() const;
    // Replaces the text without reporting an edit; the cursor goes to the end.
    void setText(const QString &text);
    // The cursor's position in text().
    int cursorPosition() const;
    void setCursorPosition(int position);

    // The height the field needs to show all of its lines at its current width.
    int contentHeight() const;
    // Where the tokens are drawn, in viewport coordinates (a name broken over two lines has two).
    QList<QRectF> tokenRects() const;

signals:
    void textEdited(const QString &text);
    void editingFinished();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    void contentsChanged();
    // Puts the break opportunities where they belong: after each "," and nowhere else.
    void placeBreaks();
    void finishEditing();
    void updateHeight();

    bool m_changing = false;
    bool m_edited = false;
};
