#include "ProjectListCells.h"

#include "ActionTableColumn.h"
#include "Pictures.h"
#include "ProjectListModel.h"
#include "model/Clock.h"
#include "model/ProjectCollection.h"
#include "model/StoredForms.h"
#include "platform/CurrencyFormatter.h"
#include "platform/Preferences.h"

namespace {

const QStringList &columnIdentifiers() {
    static const QStringList identifiers{
        QStringLiteral("Day_Col"), QStringLiteral("Description_Col"),
        QStringLiteral("Duration_Col"), QStringLiteral("Action_Col"), QStringLiteral("State_Col")};
    return identifiers;
}

} // namespace

ProjectListCells::ProjectListCells(const ProjectCollection &collection,
                                   const CurrencyFormatter &currency, const QPalette &palette)
    : m_collection(collection)
    , m_currency(currency)
    , m_colors(palette) {}

void ProjectListCells::readPreferences(const Preferences &preferences) {
    m_useProjectColor = preferences.boolForKey(u"useProjectColor");
    m_useUnfinishedEntryColor = preferences.boolForKey(u"useUnfinishedEntryColor");
    m_projectColor = preferences.colorForKey(u"projectColor");
    m_unfinishedEntryColor = preferences.colorForKey(u"unfinishedEntryColor");
}

bool ProjectListCells::isShownPreference(const QString &key) {
    static const QStringList shownKeys{
        QStringLiteral("useProjectColor"), QStringLiteral("useUnfinishedEntryColor"),
        QStringLiteral("projectColor"), QStringLiteral("unfinishedEntryColor"),
        QStringLiteral("listDateFormat")};
    return shownKeys.contains(key);
}

QString ProjectListCells::columnIdentifier(int column) {
    return columnIdentifiers().value(column);
}

int ProjectListCells::columnForIdentifier(QStringView identifier) {
    for (int column = 0; column < ProjectListModel::ColumnCount; ++column) {
        if (columnIdentifiers()[column] == identifier)
            return column;
    }
    return -1;
}

int ProjectListCells::alignment(int column) {
    switch (column) {
    case ProjectListModel::DurationColumn:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case ProjectListModel::StateColumn:
    case ProjectListModel::ActionColumn:
        return int(Qt::AlignCenter);
    default:
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

QString ProjectListCells::runningDuration(const ProjectItem &item) const {
    const auto &entry = static_cast<const Entry &>(item);
    const QDateTime start = entry.fromAsDate();
    const QDateTime now = Clock::now();
    const int minutes = int(start.secsTo(now) / 60);
    return StoredForms::durationText(minutes - entry.pauseTimeWithPeriodFrom(start, now));
}

QVariant ProjectListCells::projectData(const Project &project, int column, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        switch (column) {
        case ProjectListModel::DayColumn:
            return project.name();
        case ProjectListModel::DescriptionColumn:
            return project.description();
        default:
            return {};
        }
    case Qt::ToolTipRole:
        if (column == ProjectListModel::DescriptionColumn && !project.description().isEmpty())
            return project.description();
        return {};
    case ProjectListModel::ActionImagesRole:
        return column == ProjectListModel::ActionColumn
                   ? QVariant(ActionTableColumn::imagesForProjectRow())
                   : QVariant();
    case Qt::ForegroundRole:
        return m_collection.isProjectFiltered(project) ? RowColors::faded(m_colors.text())
                                                       : m_colors.text();
    case Qt::BackgroundRole:
        return m_useProjectColor ? QVariant(m_colors.tint(m_projectColor)) : QVariant();
    default:
        return {};
    }
}

QVariant ProjectListCells::itemData(const ProjectItem &item, int column, int role) const {
    switch (role) {
    case Qt::DisplayRole:
        switch (column) {
        case ProjectListModel::DayColumn:
            return item.hasPeriod() ? static_cast<const Entry &>(item).formattedFromDate()
                                    : item.formattedDay();
        case ProjectListModel::DescriptionColumn:
            return item.comment();
        case ProjectListModel::DurationColumn:
            if (item.isFlatFee())
                return m_currency.format(static_cast<const FlatFeeEntry &>(item).amount());
            if (item.isWorking())
                return runningDuration(item);
            return static_cast<const Entry &>(item).formattedEffectiveTime();
        default:
            return {};
        }
    case ProjectListModel::ImageNameRole:
        if (column != ProjectListModel::DayColumn)
            return {};
        return item.attachments().isEmpty() ? QStringLiteral("clip_blank") : QStringLiteral("clip");
    case Qt::DecorationRole: {
        if (column != ProjectListModel::DayColumn)
            return {};
        const QIcon icon =
            Pictures::icon(itemData(item, column, ProjectListModel::ImageNameRole).toString());
        return icon.isNull() ? QVariant() : QVariant(icon);
    }
    case Qt::ToolTipRole:
        if (column == ProjectListModel::DescriptionColumn && !item.comment().isEmpty())
            return item.comment();
        return {};
    case Qt::CheckStateRole:
        return column == ProjectListModel::StateColumn
                   ? QVariant(int(item.isChecked() ? Qt::Checked : Qt::Unchecked))
                   : QVariant();
    case ProjectListModel::ActionImagesRole:
        return column == ProjectListModel::ActionColumn
                   ? QVariant(ActionTableColumn::imagesForItemRow(item))
                   : QVariant();
    case Qt::ForegroundRole: {
        QColor color = m_colors.text();
        if (item.isPaused())
            color = m_colors.pausedText();
        else if (column == ProjectListModel::DurationColumn && item.isWorking())
            color = m_colors.runningText();
        return m_collection.isEntryFiltered(item) ? RowColors::faded(color) : color;
    }
    case Qt::BackgroundRole:
        if (m_useUnfinishedEntryColor && item.isEntry() && item.isWorking())
            return m_colors.tint(m_unfinishedEntryColor);
        return {};
    default:
        return {};
    }
}

QVariant ProjectListCells::headerData(int section, int role) {
    if (role == Qt::TextAlignmentRole)
        return alignment(section);
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case ProjectListModel::DayColumn:
        return tr("Day");
    case ProjectListModel::DescriptionColumn:
        return tr("Description");
    case ProjectListModel::DurationColumn:
        return tr("Duration");
    case ProjectListModel::StateColumn:
        return tr("State");
    default:
        return QString();
    }
}
