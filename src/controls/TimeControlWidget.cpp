#include "TimeControlWidget.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionSpinBox>

namespace {

// Room on each side of a field's text for its selection.
constexpr int fieldPadding = 1;

} // namespace

TimeControlWidget::TimeControlWidget(QWidget *parent)
    : QWidget(parent)
    , m_control(new WBTimeControl(this)) {
    attach();
}

TimeControlWidget::TimeControlWidget(WBTimeControl &control, QWidget *parent)
    : QWidget(parent)
    , m_control(&control) {
    attach();
}

void TimeControlWidget::attach() {
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    QWidget::setEnabled(m_control->isEnabled());
    connect(m_control, &WBTimeControl::displayChanged, this, [this] {
        updateGeometry();
        update();
    });
    connect(m_control, &WBTimeControl::enabledChanged, this, [this](bool enabled) {
        QWidget::setEnabled(enabled);
        if (!enabled)
            m_repeat.stop();
    });
}

void TimeControlWidget::initStyleOption(QStyleOptionSpinBox *option) const {
    option->initFrom(this);
    option->frame = !m_control->isFlatAppearance();
    option->buttonSymbols = QAbstractSpinBox::UpDownArrows;
    option->subControls =
        QStyle::SC_SpinBoxEditField | QStyle::SC_SpinBoxUp | QStyle::SC_SpinBoxDown;
    if (option->frame)
        option->subControls |= QStyle::SC_SpinBoxFrame;
    option->stepEnabled = m_control->isEnabled()
                              ? QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled
                              : QAbstractSpinBox::StepNone;
    if (!isEnabled())
        option->state &= ~QStyle::State_HasFocus;
    option->activeSubControls = m_pressed;
    if (m_pressed != QStyle::SC_None)
        option->state |= QStyle::State_Sunken;
}

QRect TimeControlWidget::editFieldRect() const {
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxEditField, this);
}

QRect TimeControlWidget::upButtonRect() const {
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, this);
}

QRect TimeControlWidget::downButtonRect() const {
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxDown, this);
}

int TimeControlWidget::fieldWidth(int field) const {
    const QFontMetrics metrics = fontMetrics();
    if (field == WBTimeControl::MeridianField) {
        return std::max(metrics.horizontalAdvance(m_control->amString()),
                        metrics.horizontalAdvance(m_control->pmString())) +
               2 * fieldPadding;
    }
    int digit = 0;
    for (char16_t c = u'0'; c <= u'9'; ++c)
        digit = std::max(digit, metrics.horizontalAdvance(QChar(c)));
    return 2 * digit + 2 * fieldPadding;
}

QRect TimeControlWidget::fieldRect(int field) const {
    const QRect edit = editFieldRect();
    const QFontMetrics metrics = fontMetrics();
    const int separator = metrics.horizontalAdvance(m_control->timeSeparator());
    const int space = metrics.horizontalAdvance(u' ');
    const int height = std::min(edit.height(), metrics.height() + 2);
    int x = edit.left() + 1;
    for (const WBTimeControl::Field shown : m_control->visibleFields()) {
        if (shown != WBTimeControl::HourField)
            x += shown == WBTimeControl::MeridianField ? space : separator;
        const int width = fieldWidth(shown);
        if (shown == field)
            return QRect(x, edit.top() + (edit.height() - height) / 2, width, height);
        x += width;
    }
    return {};
}

QSize TimeControlWidget::sizeHint() const {
    ensurePolished();
    const QFontMetrics metrics = fontMetrics();
    int width = 2;
    for (const WBTimeControl::Field field : m_control->visibleFields()) {
        if (field != WBTimeControl::HourField)
            width += field == WBTimeControl::MeridianField
                         ? metrics.horizontalAdvance(u' ')
                         : metrics.horizontalAdvance(m_control->timeSeparator());
        width += fieldWidth(field);
    }
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = m_control->isFlatAppearance()
                          ? 0
                          : style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &frame, this);
    const QSize line = style()->sizeFromContents(
        QStyle::CT_LineEdit, &frame, QSize(width, std::max(metrics.height(), 14) + 2), this);
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &option, line, this);
}

void TimeControlWidget::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    QStyleOptionSpinBox option;
    initStyleOption(&option);
    style()->drawComplexControl(QStyle::CC_SpinBox, &option, &painter, this);

    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor text = palette().color(group, QPalette::Text);
    const bool focused = hasFocus() && isEnabled();
    const QFontMetrics metrics = fontMetrics();
    painter.setFont(font());
    QRect previous;
    for (const WBTimeControl::Field field : m_control->visibleFields()) {
        const QRect box = fieldRect(field);
        if (!previous.isNull() && field != WBTimeControl::MeridianField) {
            painter.setPen(text);
            painter.drawText(QRect(previous.right() + 1, box.top(),
                                   box.left() - previous.right() - 1, box.height()),
                             Qt::AlignCenter, m_control->timeSeparator());
        }
        previous = box;
        const QString shown = m_control->fieldText(field);
        const bool selected = focused && field == m_control->selected();
        const bool caret = selected && m_control->isEditing() && !m_wholeSelected &&
                           field != WBTimeControl::MeridianField;
        if (selected && !caret) {
            painter.fillRect(box, palette().color(QPalette::Active, QPalette::Highlight));
            painter.setPen(palette().color(QPalette::Active, QPalette::HighlightedText));
        } else {
            painter.setPen(text);
        }
        const int flags = field == WBTimeControl::MeridianField ? Qt::AlignLeft | Qt::AlignVCenter
                                                                : Qt::AlignRight | Qt::AlignVCenter;
        const QRect inner = box.adjusted(fieldPadding, 0, -fieldPadding, 0);
        painter.drawText(inner, flags, shown);
        if (caret) {
            const int x = inner.right() + 1;
            painter.fillRect(
                QRect(x, inner.top() + 1, 1, std::min(inner.height() - 2, metrics.height())), text);
        }
    }
}

int TimeControlWidget::neighbour(bool next) const {
    const QList<WBTimeControl::Field> fields = m_control->visibleFields();
    const qsizetype at =
        fields.indexOf(WBTimeControl::Field(m_control->selected())) + (next ? 1 : -1);
    return at >= 0 && at < fields.size() ? fields.at(at) : -1;
}

void TimeControlWidget::typeText(const QString &text) {
    const int length = int(m_control->fieldText(m_control->selected()).size());
    const bool taken = m_wholeSelected || !m_control->isEditing()
                           ? m_control->changeText(0, length, text)
                           : m_control->changeText(length, 0, text);
    if (taken)
        m_wholeSelected = false;
    update();
}

void TimeControlWidget::deleteBackward() {
    const int length = int(m_control->fieldText(m_control->selected()).size());
    if (m_wholeSelected || !m_control->isEditing())
        m_control->changeText(0, length, QString());
    else if (length > 0)
        m_control->changeText(length - 1, 1, QString());
    if (m_control->selected() != WBTimeControl::MeridianField)
        m_wholeSelected = false;
    update();
}

void TimeControlWidget::step(QStyle::SubControl arrow) {
    if (arrow == QStyle::SC_SpinBoxUp)
        m_control->stepUp();
    else
        m_control->stepDown();
    m_wholeSelected = true;
    update();
}

void TimeControlWidget::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Up:
        step(QStyle::SC_SpinBoxUp);
        return;
    case Qt::Key_Down:
        step(QStyle::SC_SpinBoxDown);
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (const int field = neighbour(event->key() == Qt::Key_Right); field >= 0)
            m_control->setSelected(field);
        m_wholeSelected = true;
        update();
        return;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        deleteBackward();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        // Taken over here; the dialog's default button still gets the key.
        if (m_control->isEditing())
            m_control->acceptNewValueInSelectedCell();
        m_wholeSelected = true;
        update();
        event->ignore();
        return;
    case Qt::Key_Escape:
        if (m_control->isEditing()) {
            m_control->abortEditing();
            m_wholeSelected = true;
            update();
            return;
        }
        event->ignore();
        return;
    default:
        break;
    }
    const QString text = event->text();
    if (!text.isEmpty() && text.front().isPrint() &&
        !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
        typeText(text);
        return;
    }
    QWidget::keyPressEvent(event);
}

void TimeControlWidget::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || !isEnabled()) {
        QWidget::mousePressEvent(event);
        return;
    }
    const QPoint at = event->position().toPoint();
    for (const QStyle::SubControl arrow : {QStyle::SC_SpinBoxUp, QStyle::SC_SpinBoxDown}) {
        if ((arrow == QStyle::SC_SpinBoxUp ? upButtonRect() : downButtonRect()).contains(at)) {
            m_pressed = arrow;
            step(arrow);
            m_repeat.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatThreshold), this);
            return;
        }
    }
    for (const WBTimeControl::Field field : m_control->visibleFields()) {
        const QRect box = fieldRect(field);
        if (at.x() >= box.left() - 2 && at.x() <= box.right() + 2) {
            m_control->setSelected(field);
            m_wholeSelected = true;
            update();
            break;
        }
    }
}

void TimeControlWidget::mouseReleaseEvent(QMouseEvent *event) {
    m_repeat.stop();
    if (m_pressed != QStyle::SC_None) {
        m_pressed = QStyle::SC_None;
        update();
    }
    QWidget::mouseReleaseEvent(event);
}

void TimeControlWidget::timerEvent(QTimerEvent *event) {
    if (event->timerId() != m_repeat.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_repeat.start(style()->styleHint(QStyle::SH_SpinBox_ClickAutoRepeatRate), this);
    step(m_pressed);
}

void TimeControlWidget::wheelEvent(QWheelEvent *event) {
    if (!hasFocus() || !isEnabled() || event->angleDelta().y() == 0) {
        event->ignore();
        return;
    }
    step(event->angleDelta().y() > 0 ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown);
}

void TimeControlWidget::focusInEvent(QFocusEvent *event) {
    const QList<WBTimeControl::Field> fields = m_control->visibleFields();
    if (event->reason() == Qt::TabFocusReason)
        m_control->setSelected(fields.constFirst());
    else if (event->reason() == Qt::BacktabFocusReason)
        m_control->setSelected(fields.constLast());
    m_wholeSelected = true;
    QWidget::focusInEvent(event);
    update();
}

void TimeControlWidget::focusOutEvent(QFocusEvent *event) {
    if (m_control->isEditing())
        m_control->acceptNewValueInSelectedCell();
    m_wholeSelected = true;
    QWidget::focusOutEvent(event);
    update();
}

bool TimeControlWidget::focusNextPrevChild(bool next) {
    if (const int field = neighbour(next); field >= 0 && hasFocus()) {
        m_control->setSelected(field);
        m_wholeSelected = true;
        update();
        return true;
    }
    if (m_control->isEditing())
        m_control->acceptNewValueInSelectedCell();
    return QWidget::focusNextPrevChild(next);
}

void TimeControlWidget::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        updateGeometry();
    QWidget::changeEvent(event);
}
