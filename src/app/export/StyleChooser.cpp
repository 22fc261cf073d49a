#include "export/StyleChooser.h"

#include "platform/Folders.h"

#include <QDirIterator>
#include <QIcon>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize cellSize(390, 135);
constexpr QSize pictureSize(128, 128);

// The style's "preview" picture, in its folder or one of its resource folders.
QPixmap previewOf(const QString &stylePath) {
    QDirIterator found(stylePath, {u"preview.*"_s}, QDir::Files, QDirIterator::Subdirectories);
    QPixmap picture(found.hasNext() ? found.next() : QString());
    if (picture.isNull())
        picture = QIcon(Folders::imagePath(u"template"_s)).pixmap(pictureSize);
    return picture.scaled(pictureSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

StyleChooser::StyleChooser(QWidget *parent)
    : QListWidget(parent) {
    setAccessibleName(tr("Style"));
    setIconSize(pictureSize);
    setUniformItemSizes(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setMinimumSize(cellSize.width() + 24, cellSize.height() * 2 + 8);
    connect(this, &QListWidget::currentItemChanged, this, [this](QListWidgetItem *item) {
        if (item)
            emit styleChosen(item->data(Qt::UserRole).toString());
    });
}

void StyleChooser::fill(const QList<HTMLStyles::Style> &styles, const QString &selectedPath) {
    const QSignalBlocker quiet(this);
    clear();
    for (const HTMLStyles::Style &style : styles) {
        auto *cell = new QListWidgetItem(QIcon(previewOf(style.path)), style.title, this);
        cell->setData(Qt::UserRole, style.path);
        cell->setSizeHint(cellSize);
        if (style.path == selectedPath)
            setCurrentItem(cell);
    }
    if (!currentItem() && count() > 0)
        setCurrentRow(0);
}

QString StyleChooser::selectedPath() const {
    return currentItem() ? currentItem()->data(Qt::UserRole).toString() : QString();
}
