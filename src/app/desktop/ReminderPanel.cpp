#include "desktop/ReminderPanel.h"

#include "platform/UserAlerts.h"

#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 64;
constexpr int margin = 20;
// The labels start right of the icon.
constexpr int labelLeft = 2 * margin + iconSize + 20;

} // namespace

QSize ReminderPanel::panelSize(QSize title, QSize text) {
    return {qMax(text.width(), title.width()) + 216,
            qMax(105 + title.height() + text.height(), 122)};
}

ReminderPanel::ReminderPanel(UserAlerts &alerts, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint)
    , m_alerts(alerts)
    , m_icon(new QLabel(this))
    , m_title(new QLabel(this))
    , m_text(new QLabel(this))
    , m_ok(new QPushButton(tr("OK"), this)) {
    setObjectName(u"ReminderPanel"_s);
    setWindowTitle(tr("Hourfold Reminder"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_icon->setGeometry(margin, margin, iconSize, iconSize);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->setObjectName(u"reminderTitle"_s);
    m_text->setObjectName(u"reminderText"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_title->setTextFormat(Qt::PlainText);
    m_ok->setObjectName(u"reminderOk"_s);
    m_ok->setAccessibleName(tr("OK"));
    m_ok->setDefault(true);
    connect(m_ok, &QPushButton::clicked, this, &ReminderPanel::reminderDialogOk);
    auto *close = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    connect(close, &QShortcut::activated, this, &ReminderPanel::reminderDialogOk);
}

void ReminderPanel::showBuiltInAlert(const QString &title, const QString &text,
                                     const QString &icon) {
    m_alerts.beep();
    m_icon->setPixmap(QIcon(icon).pixmap(iconSize, iconSize));
    m_title->setText(title);
    m_text->setText(text);
    m_title->adjustSize();
    m_text->adjustSize();
    m_title->setAccessibleName(title);
    m_text->setAccessibleName(text);
    setAccessibleDescription(text);
    const QSize size = panelSize(m_title->size(), m_text->size());
    setFixedSize(size);
    m_title->move(labelLeft, margin + 4);
    m_text->move(labelLeft, textTop);
    m_ok->adjustSize();
    m_ok->move(size.width() - m_ok->width() - margin, size.height() - m_ok->height() - margin);
    if (!m_placed) {
        m_placed = true;
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        move(screen.center() - QPoint(size.width() / 2, size.height() / 2));
    }
    show();
    raise();
}

void ReminderPanel::reminderDialogOk() {
    hide();
}
