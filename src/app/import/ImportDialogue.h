#pragma once

#include "import/ImportDialogueLogic.h"

#include <QDialog>
#include <functional>

class CustomerStorage;
class ProjectCollection;
class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QTreeWidget;
class TagStorage;

// File ▸ Import…: the source and its file or folder, Timewarrior's project rule, a preview of the
// projects with their entries and hours and of the problems found, and the choice between the
// open document and a new one. Reading shows progress and can be cancelled; nothing reaches the
// document before Import, which adds everything as one undo step.
class ImportDialogue : public QDialog {
    Q_OBJECT

public:
    struct Services {
        ProjectCollection &collection;
        CustomerStorage *customers;
        TagStorage *tags;
        // Asks for a file (false) or folder (true); empty when cancelled.
        std::function<QString(bool folder)> choosePath;
        // Replaces the open document by a new one (asking to save it first); false when the
        // user kept the old one.
        std::function<bool()> newDocument;
    };

    ImportDialogue(const Services &services, QWidget *parent = nullptr);

    ImportDialogueLogic &logic() { return m_logic; }
    // Reads the source into the preview, with a progress window while it takes long.
    void preview();
    // Imports the preview into the chosen document and closes the dialogue.
    void import();

private:
    void pathEdited();
    void updateControls();

    Services m_services;
    ImportDialogueLogic m_logic;
    QComboBox *m_source;
    QLineEdit *m_path;
    QComboBox *m_rule;
    QLineEdit *m_pattern;
    QPushButton *m_previewButton;
    QTreeWidget *m_projects;
    QListWidget *m_problems;
    QLabel *m_summary;
    QCheckBox *m_skip;
    QRadioButton *m_intoOpen;
    QRadioButton *m_intoNew;
    QDialogButtonBox *m_buttons;
};
