#include "filters/SearchResultsWindow.h"

#include "ProjectListModel.h"
#include "ProjectListView.h"
#include "filters/SearchResultsDelegate.h"
#include "filters/SearchResultsModel.h"
#include "model/ProjectCollection.h"

#include <QLineEdit>
#include <QListView>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

SearchResultsWindow::SearchResultsWindow(const ProjectCollection &collection, ProjectListView &list,
                                         QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_search([&collection] { return collection.projectArray(); })
    , m_list(list)
    , m_field(new QLineEdit)
    , m_table(new QListView) {
    setWindowTitle(tr("Search Results"));
    m_field->setObjectName(u"resultsSearchField"_s);
    m_field->setPlaceholderText(tr("Search projects and entries"));
    m_field->setAccessibleName(tr("Search text"));
    m_field->setClearButtonEnabled(true);
    m_table->setObjectName(u"resultsTable"_s);
    m_table->setAccessibleName(tr("Search results"));
    m_table->setModel(new SearchResultsModel(m_search, this));
    m_table->setItemDelegate(new SearchResultsDelegate(this));
    m_table->setUniformItemSizes(true);
    m_table->setSpacing(1);
    m_table->setAlternatingRowColors(true);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    setFocusProxy(m_field);
    new QShortcut(QKeySequence::Cancel, this, this, &QWidget::close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_field);
    layout->addWidget(m_table);
    resize(460, 360);

    connect(m_field, &QLineEdit::textChanged, &m_search, &SearchController::searchFor);
    connect(m_field, &QLineEdit::returnPressed, this, [this] {
        if (m_search.rowCount() > 0) {
            m_table->setFocus();
            m_table->setCurrentIndex(m_table->model()->index(0, 0));
        }
    });
    connect(m_table, &QListView::activated, this,
            [this](const QModelIndex &index) { revealResult(index.row()); });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) {
                if (current.isValid())
                    revealResult(current.row());
            });
}

void SearchResultsWindow::searchFor(const QString &text) {
    // The first time beside the main window's right edge, later where the user left it.
    if (!m_placed && parentWidget()) {
        m_placed = true;
        const QRect main = parentWidget()->window()->frameGeometry();
        move(main.right() - width() - 40, main.top() + 120);
    }
    if (m_field->text() == text)
        m_search.searchFor(text);
    else
        m_field->setText(text);
    show();
    raise();
    activateWindow();
    m_field->setFocus();
}

bool SearchResultsWindow::revealResult(int row) {
    const SearchController::Result result = m_search.result(row);
    ProjectListModel *model = m_list.projectListModel();
    if (!result.project || !model)
        return false;
    const QModelIndex index =
        result.entry ? model->indexOfItem(*result.entry) : model->indexOfProject(*result.project);
    if (!index.isValid())
        return false;
    if (index.parent().isValid())
        m_list.expand(index.parent());
    m_list.selectRow(index);
    return true;
}
