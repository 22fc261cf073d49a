#pragma once

#include "RowColors.h"

#include <QColor>
#include <QCoreApplication>
#include <QVariant>

class CurrencyFormatter;
class Preferences;
class Project;
class ProjectCollection;
class ProjectItem;

// What the cells of the project list show, role by role (the columns and roles of
// ProjectListModel). A project row shows its name in the Day column, its description and the
// action button; its total and check box come from the model, which keeps them per project. An
// item row shows its day (a period's start date) with the picture "clip" when it has attachments,
// "clip_blank" otherwise, its comment, its duration (a running entry's counted up to now, a flat
// fee's amount), the action button of a running entry and its check mark. Text colours follow
// RowColors; project rows and unfinished entries are tinted when the preferences ask for it.
class ProjectListCells {
    Q_DECLARE_TR_FUNCTIONS(ProjectListCells)

public:
    ProjectListCells(const ProjectCollection &collection, const CurrencyFormatter &currency,
                     const QPalette &palette);

    void setPalette(const QPalette &palette) { m_colors = RowColors(palette); }
    // Takes over the tints and whether they are used.
    void readPreferences(const Preferences &preferences);
    // Whether a change of this preference changes what the cells show.
    static bool isShownPreference(const QString &key);

    // "Day_Col", "Description_Col", "Duration_Col", "Action_Col", "State_Col"; empty outside.
    static QString columnIdentifier(int column);
    // The column of an identifier; -1 for another text.
    static int columnForIdentifier(QStringView identifier);

    QVariant projectData(const Project &project, int column, int role) const;
    QVariant itemData(const ProjectItem &item, int column, int role) const;
    static QVariant headerData(int section, int role);
    static int alignment(int column);

private:
    QString runningDuration(const ProjectItem &item) const;

    const ProjectCollection &m_collection;
    const CurrencyFormatter &m_currency;
    RowColors m_colors;
    bool m_useProjectColor = true;
    bool m_useUnfinishedEntryColor = true;
    QColor m_projectColor;
    QColor m_unfinishedEntryColor;
};
