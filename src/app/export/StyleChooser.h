#pragma once

#include "export/HTMLStyles.h"

#include <QListWidget>

// The style chooser of the PDF, HTML and RTF options: one picture cell per style with the style's
// preview (the application's "template" picture for a style without one) and its folder's name.
class StyleChooser : public QListWidget {
    Q_OBJECT

public:
    explicit StyleChooser(QWidget *parent = nullptr);

    // One cell per style, in the order given; the style at the path is selected, else the first.
    void fill(const QList<HTMLStyles::Style> &styles, const QString &selectedPath);
    // The folder of the selected style; empty while none is.
    QString selectedPath() const;

signals:
    void styleChosen(const QString &path);
};
