#include "desktop/MiniWindow.h"

#include "model/Entry.h"
#include "model/Project.h"
#include "platform/Folders.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPropertyAnimation>
#include <QScreen>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr int panelWidth = 300;
constexpr int titleHeight = 24;
// Room above and below the opening.
constexpr int openingMargin = 7;
constexpr int openingHeight = MiniWindowLogic::rowHeight * MiniWindowLogic::openingRows;
// Lines start 15 pixels from the left and leave the arrows' column free on the right.
constexpr int lineLeft = 15;
constexpr int lineNarrowing = 48;
constexpr int arrowsLeft = panelWidth - lineNarrowing + 14;
constexpr int selectorLeft = 6;

QToolButton *arrowButton(Qt::ArrowType arrow, const QString &name, QWidget *parent) {
    auto *button = new QToolButton(parent);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedSize(24, 24);
    return button;
}

} // namespace

MiniWindow::MiniWindow(ProjectCollection &collection, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_logic(collection)
    , m_opening(new QWidget(this))
    , m_selector(new QWidget(m_opening))
    , m_list(new QWidget(m_opening))
    , m_emptyText(new QLabel(tr("No timer is running"), m_opening))
    , m_upButton(arrowButton(Qt::UpArrow, tr("Up"), this))
    , m_downButton(arrowButton(Qt::DownArrow, tr("Down"), this))
    , m_scrolling(new QPropertyAnimation(m_list, "geometry", this))
    , m_fading(new QPropertyAnimation(this, "windowOpacity", this)) {
    setObjectName(u"MiniWindow"_s);
    setWindowTitle(tr("Hourfold - %1").arg(tr("Active entries")));
    setAccessibleName(windowTitle());
    setAttribute(Qt::WA_TranslucentBackground);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(panelWidth, titleHeight + openingHeight + 2 * openingMargin);

    auto *close = new QToolButton(this);
    close->setText(u"×"_s);
    close->setAutoRaise(true);
    close->setAccessibleName(tr("Close"));
    close->setToolTip(tr("Close"));
    close->setFocusPolicy(Qt::NoFocus);
    close->setGeometry(4, 2, 20, 20);
    connect(close, &QToolButton::clicked, this, &MiniWindow::hideHUD);

    m_opening->setGeometry(0, titleHeight + openingMargin, panelWidth, openingHeight);
    // The selection bar ends before the arrows' column.
    m_selector->setGeometry(selectorLeft, 0, arrowsLeft - 2 - selectorLeft,
                            MiniWindowLogic::rowHeight);
    m_selector->setStyleSheet(u"background: rgba(255, 255, 255, 45); border-radius: 5px;"_s);
    m_emptyText->setGeometry(0, 0, panelWidth, openingHeight);
    m_emptyText->setAlignment(Qt::AlignCenter);
    m_emptyText->setStyleSheet(u"color: #9a9a9a;"_s);
    m_upButton->move(arrowsLeft, titleHeight + openingMargin + 4);
    m_downButton->move(arrowsLeft, titleHeight + openingMargin + openingHeight - 28);
    connect(m_upButton, &QToolButton::clicked, this, &MiniWindow::up);
    connect(m_downButton, &QToolButton::clicked, this, &MiniWindow::down);
    setStyleSheet(u"QToolButton { color: white; border: none; }"
                  u"QToolButton:disabled { color: #555; }"
                  u"QLabel { color: white; }"_s);

    m_scrolling->setDuration(200);
    m_scrolling->setEasingCurve(QEasingCurve::OutCubic);
    m_fading->setDuration(200);
    connect(m_fading, &QPropertyAnimation::finished, this, [this] {
        if (!m_visible)
            hide();
    });
    updateButtonState();
}

void MiniWindow::showHUD() {
    if (!m_visible || !isVisible()) {
        m_visible = true;
        reloadData();
        if (!m_placed) {
            m_placed = true;
            const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
            move(screen.right() - width() - 40, screen.top() + 60);
        }
        m_fading->stop();
        setWindowOpacity(0.0);
        show();
        m_fading->setStartValue(0.0);
        m_fading->setEndValue(1.0);
        m_fading->start();
        emit visibilityChanged(true);
    }
    raise();
    activateWindow();
    setFocus();
}

void MiniWindow::hideHUD() {
    if (!m_visible)
        return;
    m_visible = false;
    m_fading->stop();
    m_fading->setStartValue(windowOpacity());
    m_fading->setEndValue(0.0);
    m_fading->start();
    emit visibilityChanged(false);
}

void MiniWindow::up() {
    if (!m_visible)
        showHUD();
    if (m_logic.up())
        placeList(-1);
}

void MiniWindow::down() {
    if (!m_visible)
        showHUD();
    if (m_logic.down())
        placeList(1);
}

void MiniWindow::play() {
    if (!m_visible)
        showHUD();
    m_logic.play();
}

void MiniWindow::reloadData() {
    m_logic.reloadData();
    const auto &items = m_logic.listItems();
    while (m_lines.size() > items.size())
        delete m_lines.takeLast();
    const int lineWidth = panelWidth - lineNarrowing;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (i == m_lines.size()) {
            auto *line = new QLabel(m_list);
            line->setTextFormat(Qt::RichText);
            line->setWordWrap(false);
            line->setCursor(Qt::PointingHandCursor);
            line->installEventFilter(this);
            line->show();
            m_lines << line;
        }
        m_lines[i]->setText(lineText(*items.at(i)));
    }
    for (QLabel *line : std::as_const(m_lines))
        line->resize(lineWidth, MiniWindowLogic::rowHeight);
    placeList(0);
}

void MiniWindow::placeList(int step) {
    const QRect frame = m_logic.listFrame(panelWidth);
    m_scrolling->stop();
    // The lines keep their place in the list while it grows or shrinks at the top.
    for (qsizetype i = 0; i < m_lines.size(); ++i)
        m_lines[i]->move(lineLeft, m_logic.lineTop(int(i)));
    if (step != 0) {
        // Starts where the lines stood before the step and slides one row.
        m_scrolling->setStartValue(frame.translated(0, step * MiniWindowLogic::rowHeight));
        m_scrolling->setEndValue(frame);
        m_scrolling->start();
    } else {
        m_list->setGeometry(frame);
    }
    updateButtonState();
}

void MiniWindow::updateButtonState() {
    m_selector->setVisible(m_logic.isSelectorVisible());
    m_emptyText->setVisible(!m_logic.isSelectorVisible());
    m_upButton->setEnabled(m_logic.isUpEnabled());
    m_downButton->setEnabled(m_logic.isDownEnabled());
}

QString MiniWindow::lineText(const Entry &entry) const {
    const QString image = Folders::imagePath(entry.isPaused() ? u"btn_pause"_s : u"btn_play"_s);
    const QString project = entry.parent() ? entry.parent()->name().toHtmlEscaped() : QString();
    return u"<img src=\"%1\" width=\"14\" height=\"14\"> "
           u"<span style=\"font-size: 19px; font-weight: bold;%2\">%3 </span>"
           u"<span style=\"font-size: 12px;%2\">%4</span>"_s.arg(
               image, entry.isPaused() ? u" color: #a0a0a0;"_s : QString(),
               MiniWindowLogic::durationString(entry), project);
}

void MiniWindow::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath panel;
    panel.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
    painter.fillPath(panel, QColor(24, 24, 24, 225));
    painter.setPen(QColor(255, 255, 255, 40));
    painter.drawPath(panel);
    painter.drawLine(8, titleHeight, width() - 8, titleHeight);
    QFont font = this->font();
    font.setPixelSize(12);
    painter.setFont(font);
    painter.setPen(QColor(220, 220, 220));
    painter.drawText(QRect(0, 0, width(), titleHeight), Qt::AlignCenter, windowTitle());
}

void MiniWindow::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Up:
        up();
        break;
    case Qt::Key_Down:
        down();
        break;
    case Qt::Key_Space:
        play();
        break;
    case Qt::Key_Escape:
        hideHUD();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void MiniWindow::mousePressEvent(QMouseEvent *event) {
    // The panel has no frame of its own: it moves by dragging its title.
    if (event->button() == Qt::LeftButton && event->position().y() < titleHeight)
        m_dragOffset = event->globalPosition().toPoint() - frameGeometry().topLeft();
    else
        m_dragOffset = {};
}

void MiniWindow::mouseMoveEvent(QMouseEvent *event) {
    if ((event->buttons() & Qt::LeftButton) && !m_dragOffset.isNull())
        move(event->globalPosition().toPoint() - m_dragOffset);
}

bool MiniWindow::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        const qsizetype index = m_lines.indexOf(static_cast<QLabel *>(watched));
        if (index >= 0) {
            m_logic.playOfItem(m_logic.listItems().value(index));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
