#include "customers/CustomerDropBox.h"

#include "customers/CustomerDragData.h"
#include "model/ProjectCollection.h"
#include "stores/CustomerStorage.h"
#include "stores/VCardReader.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <QPainterPath>
#include <QUndoStack>

CustomerDropBox::CustomerDropBox(CustomerStorage &storage, ProjectCollection &collection,
                                 QWidget *parent)
    : QWidget(parent)
    , m_storage(storage)
    , m_collection(collection) {
    setAcceptDrops(true);
    connect(&storage, &CustomerStorage::customersChanged, this, &CustomerDropBox::refresh);
    connect(&storage, &CustomerStorage::customerChanged, this, &CustomerDropBox::refresh);
    connect(&collection, &ProjectCollection::projectsChanged, this, &CustomerDropBox::refresh);
    refresh();
}

void CustomerDropBox::showProject(const Project *project) {
    m_project = m_collection.sharedProject(project);
    refresh();
}

std::shared_ptr<Project> CustomerDropBox::project() const {
    const auto project = m_project.lock();
    return project && m_collection.projectArray().contains(project) ? project : nullptr;
}

void CustomerDropBox::refresh() {
    const auto project = this->project();
    m_currentCustomer = project ? m_storage.customerWithID(project->customer()) : nullptr;
    if (!project)
        m_text = tr("Nothing selected");
    else if (!m_currentCustomer)
        m_text = tr("Drag Customer here");
    else if (m_currentCustomer->customerImage().isNull())
        m_text = tr("Drag Image here");
    else
        m_text.clear();
    setToolTip(m_currentCustomer ? m_currentCustomer->name() : QString());
    update();
}

QSize CustomerDropBox::sizeHint() const {
    return {180, 120};
}

QSize CustomerDropBox::minimumSizeHint() const {
    return {100, 72};
}

void CustomerDropBox::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.5);
    const QRectF frame = QRectF(rect()).adjusted(4, 4, -4, -4);
    const qreal radius = 10;
    QColor line = palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                  m_highlighted ? QPalette::Highlight : QPalette::Mid);
    if (m_highlighted) {
        QColor fill = line;
        fill.setAlpha(40);
        painter.setBrush(fill);
    }
    painter.setPen(QPen(line, m_highlighted ? 3 : 2, Qt::DashLine, Qt::RoundCap));
    painter.drawRoundedRect(frame, radius, radius);

    const QRectF inside = frame.adjusted(8, 8, -8, -8);
    if (m_currentCustomer && m_text.isEmpty()) {
        const QImage &image = m_currentCustomer->customerImage();
        const QSizeF shown = QSizeF(image.size()).scaled(inside.size(), Qt::KeepAspectRatio);
        QRectF target(QPointF(), shown);
        target.moveCenter(inside.center());
        QPainterPath clip;
        clip.addRoundedRect(target, 4, 4);
        painter.setClipPath(clip);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, image);
        return;
    }
    QFont font = this->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.15);
    painter.setFont(font);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                   QPalette::PlaceholderText));
    painter.drawText(inside, Qt::AlignCenter | Qt::TextWordWrap, m_text);
}

bool CustomerDropBox::accepts(const QMimeData &data) const {
    if (!isEnabled())
        return false;
    if (CustomerDragData::customerID(data) || CustomerDragData::hasVCard(data))
        return true;
    return m_currentCustomer && CustomerDragData::hasImage(data);
}

void CustomerDropBox::setHighlighted(bool highlighted) {
    if (m_highlighted == highlighted)
        return;
    m_highlighted = highlighted;
    update();
}

void CustomerDropBox::dragEnterEvent(QDragEnterEvent *event) {
    if (!accepts(*event->mimeData())) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setHighlighted(true);
}

void CustomerDropBox::dragMoveEvent(QDragMoveEvent *event) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void CustomerDropBox::dragLeaveEvent(QDragLeaveEvent *) {
    setHighlighted(false);
}

void CustomerDropBox::dropEvent(QDropEvent *event) {
    setHighlighted(false);
    if (!accepts(*event->mimeData()) || !drop(*event->mimeData())) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

bool CustomerDropBox::drop(const QMimeData &data) {
    const auto project = this->project();
    if (const std::optional<int> customerID = CustomerDragData::customerID(data)) {
        if (!project || !m_storage.customerWithID(*customerID))
            return false;
        m_collection.assignCustomerWithID(*customerID, project);
        return true;
    }
    if (CustomerDragData::hasVCard(data)) {
        const QByteArray cards = CustomerDragData::vCardData(data);
        if (VCardReader::read(cards).isEmpty())
            return false;
        if (!project)
            return m_storage.addCustomersFromVCard(cards) >= 0;
        QUndoStack *undo = m_collection.undoStack();
        undo->beginMacro(tr("Assign customer"));
        m_collection.assignCustomerWithID(m_storage.addCustomersFromVCard(cards), project);
        undo->endMacro();
        return true;
    }
    const QImage image = CustomerDragData::image(data);
    if (!m_currentCustomer || image.isNull())
        return false;
    m_storage.changeCustomerImage(m_currentCustomer->customerID(), image);
    return true;
}

void CustomerDropBox::changeEvent(QEvent *event) {
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        setHighlighted(false);
    QWidget::changeEvent(event);
}
