#pragma once

#include <QDialog>

class ExportController;
class QComboBox;
class QPushButton;
class QTabWidget;
class StyleChooser;

// The first sheet of the export dialogue: the format bar (PDF, HTML, RTF, CSV, Text) with the
// options of each format, the style choosers and "Add Style…". Every choice goes straight to the
// controller; Next accepts the sheet.
class ExportFormatSheet : public QDialog {
    Q_OBJECT

public:
    ExportFormatSheet(ExportController &controller, QWidget *parent);

    // Shows the controller's format and choices.
    void showChoices();
    // Lists the styles afresh in the chooser of the current format.
    void refillStyles();

signals:
    void addStyleRequested();

private:
    QWidget *stylePage(int format);
    QWidget *csvPage();
    QWidget *textPage();
    QComboBox *encodingList(const QString &name);
    QComboBox *delimiterField(const QString &name, const QStringList &items);
    void formatChosen(int format);

    ExportController &m_controller;
    QTabWidget *m_formats;
    QList<StyleChooser *> m_styleChoosers; // PDF, HTML, RTF
    QList<QComboBox *> m_encodingLists;    // CSV, text
    QComboBox *m_textDelimiter = nullptr;
    QComboBox *m_fieldDelimiter = nullptr;
    QComboBox *m_lineEndings = nullptr;
    QPushButton *m_addStyle;
};
