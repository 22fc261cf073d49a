#include "customers/CustomerSheetDialog.h"

#include "customers/ImageWell.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

CustomerSheetDialog::CustomerSheetDialog(CustomerStorage &storage, Preferences &preferences,
                                         UserAlerts &alerts, QWidget *parent)
    : QDialog(parent)
    , m_logic(storage, preferences, alerts)
    , m_name(new QLineEdit)
    , m_nameWarning(new QLabel(CustomerSheet::nameWarningText()))
    , m_color(new QPushButton)
    , m_image(new ImageWell)
    , m_removeImage(new QPushButton(tr("Remove Image")))
    , m_acceptButton(new QPushButton) {
    setWindowModality(Qt::WindowModal);

    m_name->setObjectName(u"customerNameTextField"_s);
    m_name->setMinimumWidth(m_name->fontMetrics().horizontalAdvance(u"M"_s) * 22);
    m_nameWarning->setObjectName(u"nameExistsTextBox"_s);
    m_nameWarning->setStyleSheet(u"color: #c00000;"_s);
    // The line keeps its place while hidden, so the sheet does not jump when it appears.
    QSizePolicy warningPolicy = m_nameWarning->sizePolicy();
    warningPolicy.setRetainSizeWhenHidden(true);
    m_nameWarning->setSizePolicy(warningPolicy);
    m_color->setObjectName(u"customerColor"_s);
    m_color->setToolTip(tr("Choose the colour"));
    m_color->setIconSize(QSize(40, 16));
    m_color->setAutoDefault(false);
    m_image->setObjectName(u"imageView"_s);
    m_image->setPlaceholderText(tr("Drag Image here"));
    m_image->setFixedSize(96, 96);
    m_removeImage->setObjectName(u"removeImageButton"_s);
    m_removeImage->setAutoDefault(false);
    m_acceptButton->setObjectName(u"customerAcceptButton"_s);

    auto *nameColumn = new QVBoxLayout;
    nameColumn->addWidget(m_name);
    nameColumn->addWidget(m_nameWarning);
    auto *colorRow = new QHBoxLayout;
    colorRow->addWidget(m_color);
    colorRow->addStretch();
    auto *imageRow = new QHBoxLayout;
    imageRow->addWidget(m_image);
    imageRow->addWidget(m_removeImage, 0, Qt::AlignBottom);
    imageRow->addStretch();
    auto *form = new QFormLayout;
    form->addRow(tr("Name:"), nameColumn);
    form->addRow(tr("Color:"), colorRow);
    form->addRow(tr("Picture:"), imageRow);

    auto *buttons = new QDialogButtonBox;
    buttons->addButton(QDialogButtonBox::Cancel)->setObjectName(u"cancelButton"_s);
    buttons->addButton(m_acceptButton, QDialogButtonBox::AcceptRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &CustomerSheetDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CustomerSheetDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    // Only a button inside the dialog can be its default one.
    m_acceptButton->setDefault(true);

    connect(m_name, &QLineEdit::textChanged, this,
            [this](const QString &text) { m_logic.setName(text); });
    connect(m_color, &QPushButton::clicked, this, &CustomerSheetDialog::chooseColor);
    connect(m_image, &ImageWell::imageDropped, this, [this](const QImage &image) {
        m_logic.setImage(image);
        showImage();
    });
    connect(m_removeImage, &QPushButton::clicked, this, [this] {
        m_logic.removeImage();
        showImage();
    });
}

void CustomerSheetDialog::createCustomer() {
    m_logic.createCustomer();
    showFields();
    m_name->setFocus();
    open();
}

bool CustomerSheetDialog::editCustomer(int index) {
    if (!m_logic.editCustomer(index))
        return false;
    showFields();
    m_name->setFocus();
    m_name->selectAll();
    open();
    return true;
}

void CustomerSheetDialog::showFields() {
    setWindowTitle(m_logic.title());
    m_acceptButton->setText(m_logic.acceptButtonTitle());
    m_nameWarning->setVisible(m_logic.isNameWarningVisible());
    {
        const QSignalBlocker blocker(m_name);
        m_name->setText(m_logic.name());
    }
    showColor();
    showImage();
}

void CustomerSheetDialog::showColor() {
    const qreal ratio = devicePixelRatioF();
    QPixmap swatch(m_color->iconSize() * ratio);
    swatch.setDevicePixelRatio(ratio);
    swatch.fill(m_logic.color());
    QPainter painter(&swatch);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(QRectF(QPointF(0, 0), m_color->iconSize()).adjusted(0, 0, -1, -1));
    painter.end();
    m_color->setIcon(swatch);
}

void CustomerSheetDialog::showImage() {
    m_image->setImage(m_logic.image());
    m_removeImage->setEnabled(m_logic.isRemoveImageEnabled());
}

void CustomerSheetDialog::chooseColor() {
    auto *dialog = new QColorDialog(m_logic.color(), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    connect(dialog, &QColorDialog::colorSelected, this, [this](const QColor &color) {
        m_logic.setColor(color);
        showColor();
    });
    dialog->open();
}

void CustomerSheetDialog::accept() {
    if (!m_logic.accept()) {
        m_nameWarning->setVisible(m_logic.isNameWarningVisible());
        return;
    }
    QDialog::accept();
    emit customerSaved(m_logic.customerID());
}
