#include "desktop/AwayDialog.h"

#include "model/TimeAway.h"
#include "platform/Folders.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

AwayDialog::AwayDialog(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint)
    , m_message(new QLabel(this)) {
    setObjectName(u"AwayDialog"_s);
    setWindowTitle(tr("Time Away"));
    auto *icon = new QLabel(this);
    icon->setPixmap(QIcon(Folders::imagePath(u"pause"_s)).pixmap(48, 48));
    QFont bold = m_message->font();
    bold.setBold(true);
    m_message->setFont(bold);
    m_message->setObjectName(u"awayMessage"_s);
    auto *question = new QLabel(
        tr("Should the timers count this time? It can count as a pause in each of them, or they "
           "can stop where it began."),
        this);
    question->setWordWrap(true);
    question->setMinimumWidth(360);

    auto *buttons = new QDialogButtonBox(this);
    const auto addButton = [this, buttons](const QString &text, const QString &name,
                                           Choice choice) {
        auto *button = buttons->addButton(text, QDialogButtonBox::ActionRole);
        button->setObjectName(name);
        button->setAccessibleName(QString(text).remove(u'&'));
        connect(button, &QPushButton::clicked, this, [this, choice] { answer(choice); });
        return button;
    };
    addButton(tr("&Stop the Timers"), u"stopTimers"_s, Choice::Stop);
    addButton(tr("Count as a &Pause"), u"countAsPause"_s, Choice::Pause);
    addButton(tr("&Keep the Time"), u"keepTime"_s, Choice::Keep)->setDefault(true);

    auto *layout = new QGridLayout(this);
    layout->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
    layout->addWidget(m_message, 0, 1);
    layout->addWidget(question, 1, 1);
    layout->addWidget(buttons, 2, 0, 1, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    // Closing the dialogue keeps the time as it is.
    connect(this, &QDialog::rejected, this, [this] { answer(Choice::Keep); });
}

void AwayDialog::ask(const TimeAway &away, int timers) {
    m_answered = false;
    m_message->setText(away.message(timers));
    setAccessibleDescription(m_message->text());
    show();
    raise();
    activateWindow();
}

void AwayDialog::answer(Choice choice) {
    if (m_answered)
        return;
    m_answered = true;
    hide();
    emit answered(choice);
}
