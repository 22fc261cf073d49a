#include "export/ExportFormatSheet.h"

#include "export/ExportController.h"
#include "export/StyleChooser.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ExportFormatSheet::ExportFormatSheet(ExportController &controller, QWidget *parent)
    : QDialog(parent)
    , m_controller(controller)
    , m_formats(new QTabWidget(this))
    , m_addStyle(new QPushButton(tr("&Add Style…"), this)) {
    setWindowTitle(tr("Export"));
    setWindowModality(Qt::WindowModal);
    m_formats->setObjectName(u"formats"_s);
    m_formats->setAccessibleName(tr("Format"));
    m_formats->addTab(stylePage(ExportController::Pdf), tr("PDF"));
    m_formats->addTab(stylePage(ExportController::Html), tr("HTML"));
    m_formats->addTab(stylePage(ExportController::Rtf), tr("RTF"));
    m_formats->addTab(csvPage(), tr("CSV"));
    m_formats->addTab(textPage(), tr("Text"));
    connect(m_formats, &QTabWidget::currentChanged, this, &ExportFormatSheet::formatChosen);

    m_addStyle->setObjectName(u"addStyle"_s);
    connect(m_addStyle, &QPushButton::clicked, this, &ExportFormatSheet::addStyleRequested);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton *next = buttons->addButton(tr("Next"), QDialogButtonBox::AcceptRole);
    next->setObjectName(u"next"_s);
    next->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_addStyle);
    bottom->addStretch();
    bottom->addWidget(buttons);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_formats);
    layout->addLayout(bottom);
}

QWidget *ExportFormatSheet::stylePage(int format) {
    auto *page = new QWidget(this);
    auto *chooser = new StyleChooser(page);
    chooser->setObjectName(u"styles%1"_s.arg(format));
    connect(chooser, &StyleChooser::styleChosen, this,
            [this](const QString &path) { m_controller.setStylePath(path); });
    m_styleChoosers.append(chooser);
    auto *label = new QLabel(tr("&Style:"), page);
    label->setBuddy(chooser);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(label);
    layout->addWidget(chooser);
    return page;
}

QComboBox *ExportFormatSheet::encodingList(const QString &name) {
    auto *list = new QComboBox(this);
    list->setObjectName(name);
    list->addItems(ExportController::encodings());
    connect(list, &QComboBox::currentTextChanged, this, [this](const QString &encoding) {
        m_controller.setEncoding(encoding);
        for (QComboBox *other : std::as_const(m_encodingLists))
            other->setCurrentText(encoding);
    });
    m_encodingLists.append(list);
    return list;
}

QComboBox *ExportFormatSheet::delimiterField(const QString &name, const QStringList &items) {
    auto *field = new QComboBox(this);
    field->setObjectName(name);
    field->setEditable(true);
    field->setInsertPolicy(QComboBox::NoInsert);
    field->addItems(items);
    return field;
}

QWidget *ExportFormatSheet::csvPage() {
    auto *page = new QWidget(this);
    m_textDelimiter = delimiterField(u"textDelimiter"_s, ExportController::textDelimiterItems());
    connect(m_textDelimiter, &QComboBox::editTextChanged, this,
            [this](const QString &text) { m_controller.setTextDelimiterText(text); });
    m_fieldDelimiter = delimiterField(u"fieldDelimiter"_s, ExportController::fieldDelimiterItems());
    connect(m_fieldDelimiter, &QComboBox::editTextChanged, this,
            [this](const QString &text) { m_controller.setFieldDelimiterText(text); });
    m_lineEndings = new QComboBox(page);
    m_lineEndings->setObjectName(u"lineEndings"_s);
    for (const ExportController::LineEnding &ending : ExportController::lineEndings())
        m_lineEndings->addItem(ending.title, ending.tag);
    connect(m_lineEndings, &QComboBox::currentIndexChanged, this, [this](int index) {
        m_controller.setLineEndingTag(m_lineEndings->itemData(index).toInt());
    });
    auto *form = new QFormLayout(page);
    form->addRow(tr("&Encoding:"), encodingList(u"csvEncoding"_s));
    form->addRow(tr("&Text delimiter:"), m_textDelimiter);
    form->addRow(tr("&Field delimiter:"), m_fieldDelimiter);
    form->addRow(tr("&Line endings:"), m_lineEndings);
    return page;
}

QWidget *ExportFormatSheet::textPage() {
    auto *page = new QWidget(this);
    auto *form = new QFormLayout(page);
    form->addRow(tr("&Encoding:"), encodingList(u"textEncoding"_s));
    return page;
}

void ExportFormatSheet::showChoices() {
    const QSignalBlocker quiet(m_formats);
    m_formats->setCurrentIndex(m_controller.format());
    for (QComboBox *list : std::as_const(m_encodingLists))
        list->setCurrentText(m_controller.encoding());
    // An empty field starts with its first offered item.
    m_textDelimiter->setEditText(m_controller.textDelimiterText().isEmpty()
                                     ? m_textDelimiter->itemText(0)
                                     : m_controller.textDelimiterText());
    m_fieldDelimiter->setEditText(m_controller.fieldDelimiterText().isEmpty()
                                      ? m_fieldDelimiter->itemText(0)
                                      : m_controller.fieldDelimiterText());
    m_lineEndings->setCurrentIndex(m_lineEndings->findData(m_controller.lineEndingTag()));
    formatChosen(m_controller.format());
}

void ExportFormatSheet::formatChosen(int format) {
    m_controller.setFormat(format);
    m_addStyle->setVisible(format < m_styleChoosers.size());
    refillStyles();
}

void ExportFormatSheet::refillStyles() {
    const int format = m_controller.format();
    if (format < m_styleChoosers.size())
        m_styleChoosers[format]->fill(ExportController::styles(), m_controller.stylePath());
}
