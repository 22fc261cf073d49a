#include "details/TagEditorPanel.h"

#include "common/TagCompleter.h"
#include "common/TokenField.h"
#include "stores/TagStorage.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

TagEditorPanel::TagEditorPanel(TagStorage &tags, QWidget *parent)
    : QWidget(parent, Qt::Tool)
    , m_tags(tags)
    , m_field(new TokenField) {
    setObjectName(u"tagEditorPanel"_s);
    setWindowTitle(tr("Tags"));
    m_field->setObjectName(u"editorTokenField"_s);
    new TagCompleter(m_field, tags, TagStorage::Panel::TagEditor);
    auto *hint = new QLabel(tr("The names offered when you type tags, separated by commas."));
    hint->setForegroundRole(QPalette::PlaceholderText);
    hint->setWordWrap(true);
    QFont small = hint->font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    hint->setFont(small);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_field);
    layout->addWidget(hint);
    layout->addStretch();
    layout->setSizeConstraint(QLayout::SetMinimumSize);
    resize(460, sizeHint().height());

    connect(&tags, &TagStorage::tagsChanged, this, &TagEditorPanel::updateEditorTokenField);
    updateEditorTokenField();
}

TagEditorPanel::~TagEditorPanel() {
    // The field ends its editing while the window is taken apart; the tag list it changes must
    // not call back into this half-destroyed panel.
    disconnect(&m_tags, nullptr, this, nullptr);
}

void TagEditorPanel::openTagsEditor() {
    updateEditorTokenField();
    show();
    raise();
    activateWindow();
}

void TagEditorPanel::updateEditorTokenField() {
    const QString text = m_tags.editorFieldText();
    if (m_field->text() != text)
        m_field->setText(text);
}
