#include "common/MessageBoxAlerts.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

void MessageBoxAlerts::beep() {
    QApplication::beep();
}

int MessageBoxAlerts::runModal(const Alert &alert) {
    QMessageBox box(m_window);
    switch (alert.style) {
    case Style::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case Style::Informational:
        box.setIcon(QMessageBox::Information);
        break;
    case Style::Warning:
        box.setIcon(QMessageBox::Warning);
        break;
    }
    box.setWindowModality(m_window ? Qt::WindowModal : Qt::ApplicationModal);
    box.setText(alert.message);
    box.setInformativeText(alert.informativeText);
    QList<QAbstractButton *> buttons;
    for (const QString &title : alert.buttons)
        buttons << box.addButton(title, buttons.isEmpty() ? QMessageBox::AcceptRole
                                                          : QMessageBox::ActionRole);
    if (buttons.isEmpty())
        buttons << box.addButton(QMessageBox::Ok);
    box.setDefaultButton(static_cast<QPushButton *>(buttons.constFirst()));
    // Escape and the window's close button answer "Cancel" where there is one, else the last
    // button (which is the harmless one in every alert of the program).
    const qsizetype cancel = alert.buttons.indexOf(QMessageBox::tr("Cancel"));
    box.setEscapeButton(buttons.at(cancel >= 0 ? cancel : buttons.size() - 1));
    box.exec();
    const qsizetype index = buttons.indexOf(box.clickedButton());
    return firstButton + int(index < 0 ? buttons.size() - 1 : index);
}
