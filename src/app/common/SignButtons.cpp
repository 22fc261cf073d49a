#include "common/SignButtons.h"

#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

void make(QToolButton *button, const QString &sign, const QString &objectName,
          const QString &title) {
    button->setObjectName(objectName);
    button->setText(sign);
    button->setAccessibleName(title);
    button->setToolTip(title);
}

} // namespace

void SignButtons::makeAdd(QToolButton *button, const QString &objectName, const QString &title) {
    make(button, u"+"_s, objectName, title);
}

void SignButtons::makeRemove(QToolButton *button, const QString &objectName, const QString &title) {
    make(button, u"\u2212"_s, objectName, title);
}
