#include "import/ImportDialogue.h"

#include "import/DocumentImport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <climits>

namespace {

template <typename W> W *named(W *widget, const QString &name) {
    widget->setAccessibleName(name);
    return widget;
}

} // namespace

ImportDialogue::ImportDialogue(const Services &services, QWidget *parent)
    : QDialog(parent)
    , m_services(services)
    , m_source(named(new QComboBox, tr("Source")))
    , m_path(named(new QLineEdit, tr("File or folder")))
    , m_rule(named(new QComboBox, tr("Project from")))
    , m_pattern(named(new QLineEdit, tr("Tag pattern")))
    , m_previewButton(named(new QPushButton(tr("&Preview")), tr("Preview")))
    , m_projects(named(new QTreeWidget, tr("Projects to import")))
    , m_problems(named(new QListWidget, tr("Problems found")))
    , m_summary(new QLabel)
    , m_skip(named(new QCheckBox(tr("&Leave out the lines with problems")),
                   tr("Leave out the lines with problems")))
    , m_intoOpen(
          named(new QRadioButton(tr("Into the &open document")), tr("Into the open document")))
    , m_intoNew(named(new QRadioButton(tr("Into a &new document")), tr("Into a new document")))
    , m_buttons(new QDialogButtonBox(QDialogButtonBox::Cancel)) {
    setWindowTitle(tr("Import"));
    setObjectName(QStringLiteral("ImportDialogue"));
    for (ImportSources::Source source : ImportSources::all())
        m_source->addItem(ImportSources::title(source), int(source));
    auto *chooseFile = named(new QPushButton(tr("C&hoose File…")), tr("Choose File"));
    auto *chooseFolder = named(new QPushButton(tr("Choose Fol&der…")), tr("Choose Folder"));
    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(m_path, 1);
    pathRow->addWidget(chooseFile);
    pathRow->addWidget(chooseFolder);
    m_rule->addItems({tr("The first tag"), tr("The first tag matching")});
    auto *ruleRow = new QHBoxLayout;
    ruleRow->addWidget(m_rule);
    ruleRow->addWidget(m_pattern, 1);
    m_pattern->setPlaceholderText(tr("a regular expression, such as ^client:"));

    auto *form = new QFormLayout;
    auto *sourceLabel = new QLabel(tr("&Source:"));
    sourceLabel->setBuddy(m_source);
    form->addRow(sourceLabel, m_source);
    auto *pathLabel = new QLabel(tr("&File or folder:"));
    pathLabel->setBuddy(m_path);
    form->addRow(pathLabel, pathRow);
    auto *ruleLabel = new QLabel(tr("Pro&ject from:"));
    ruleLabel->setBuddy(m_rule);
    form->addRow(ruleLabel, ruleRow);

    m_projects->setHeaderLabels(
        {tr("Project"), tr("Customer"), tr("Entries"), tr("Hours"), tr("Running")});
    m_projects->setRootIsDecorated(false);
    m_projects->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_summary->setWordWrap(true);
    auto *problemsLabel = new QLabel(tr("P&roblems found:"));
    problemsLabel->setBuddy(m_problems);
    m_problems->setMaximumHeight(120);
    m_intoOpen->setChecked(true);
    auto *into = new QHBoxLayout;
    into->addWidget(m_intoOpen);
    into->addWidget(m_intoNew);
    into->addStretch();
    QPushButton *importButton = m_buttons->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    importButton->setObjectName(QStringLiteral("importButton"));

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    auto *previewRow = new QHBoxLayout;
    previewRow->addWidget(m_summary, 1);
    previewRow->addWidget(m_previewButton);
    layout->addLayout(previewRow);
    layout->addWidget(m_projects, 1);
    layout->addWidget(problemsLabel);
    layout->addWidget(m_problems);
    layout->addWidget(m_skip);
    layout->addLayout(into);
    layout->addWidget(m_buttons);
    resize(720, 520);

    connect(m_source, &QComboBox::currentIndexChanged, this, [this] {
        m_logic.setSource(ImportSources::Source(m_source->currentData().toInt()));
        updateControls();
    });
    connect(m_path, &QLineEdit::editingFinished, this, &ImportDialogue::pathEdited);
    const auto choose = [this](bool folder) {
        const QString path = m_services.choosePath ? m_services.choosePath(folder) : QString();
        if (path.isEmpty())
            return;
        m_path->setText(path);
        pathEdited();
    };
    connect(chooseFile, &QPushButton::clicked, this, [choose] { choose(false); });
    connect(chooseFolder, &QPushButton::clicked, this, [choose] { choose(true); });
    const auto ruleChanged = [this] {
        m_logic.setProjectTagPattern(m_rule->currentIndex() == 1 ? m_pattern->text() : QString());
        updateControls();
    };
    connect(m_rule, &QComboBox::currentIndexChanged, this, ruleChanged);
    connect(m_pattern, &QLineEdit::editingFinished, this, ruleChanged);
    connect(m_previewButton, &QPushButton::clicked, this, &ImportDialogue::preview);
    connect(m_skip, &QCheckBox::toggled, this, [this](bool skip) {
        m_logic.setSkipProblems(skip);
        updateControls();
    });
    connect(m_buttons, &QDialogButtonBox::accepted, this, &ImportDialogue::import);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    updateControls();
    m_path->setFocus();
}

void ImportDialogue::pathEdited() {
    const auto detected = m_logic.setPath(m_path->text());
    if (detected)
        m_source->setCurrentIndex(int(ImportSources::all().indexOf(*detected)));
    updateControls();
}

void ImportDialogue::preview() {
    m_logic.setPath(m_path->text());
    QProgressDialog progress(tr("Reading \"%1\"…").arg(m_logic.path()), tr("Cancel"), 0, 0, this);
    progress.setWindowTitle(tr("Import"));
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(500);
    m_logic.readPreview([&progress](qint64 done, qint64 total) {
        progress.setMaximum(int(qMin<qint64>(total, INT_MAX)));
        progress.setValue(int(qMin<qint64>(done, INT_MAX)));
        QCoreApplication::processEvents();
        return !progress.wasCanceled();
    });
    updateControls();
}

void ImportDialogue::import() {
    if (!m_logic.canImport())
        return;
    if (m_intoNew->isChecked() && !(m_services.newDocument && m_services.newDocument()))
        return;
    DocumentImport::apply(m_logic.result(), m_services.collection, m_services.customers,
                          m_services.tags);
    accept();
}

void ImportDialogue::updateControls() {
    const bool timewarrior = m_logic.source() == ImportSources::Source::Timewarrior;
    m_rule->setEnabled(timewarrior);
    m_pattern->setEnabled(timewarrior && m_rule->currentIndex() == 1);
    m_previewButton->setEnabled(!m_path->text().isEmpty());
    m_projects->clear();
    for (const QStringList &row : m_logic.projectRows()) {
        auto *item = new QTreeWidgetItem(m_projects, row);
        for (int column = 2; column < 5; ++column)
            item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
    }
    for (int column = 1; column < 5; ++column)
        m_projects->resizeColumnToContents(column);
    m_problems->clear();
    const QStringList problems = m_logic.problemLines();
    m_problems->addItems(problems);
    m_skip->setEnabled(m_logic.hasPreview() && !m_logic.result().problems.isEmpty());
    m_summary->setText(m_logic.summary());
    for (QAbstractButton *button : m_buttons->buttons()) {
        if (m_buttons->buttonRole(button) == QDialogButtonBox::AcceptRole)
            button->setEnabled(m_logic.canImport());
    }
}
