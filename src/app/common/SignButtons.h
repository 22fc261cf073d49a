#pragma once

#include <QString>

class QToolButton;

// The small "+" and "−" buttons under lists and beside choosers. Their sign says little to a
// screen reader, so the title given is both their accessible name and their tool tip.
class SignButtons {
public:
    static void makeAdd(QToolButton *button, const QString &objectName, const QString &title);
    static void makeRemove(QToolButton *button, const QString &objectName, const QString &title);
};
