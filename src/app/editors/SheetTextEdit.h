#pragma once

#include <QPlainTextEdit>

// A multi-line text field in a sheet: Return and Enter go on to the sheet (which accepts),
// Shift+Return starts a new line, Tab moves to the next field.
class SheetTextEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit SheetTextEdit(QWidget *parent = nullptr);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
