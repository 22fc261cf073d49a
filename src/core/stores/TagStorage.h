#pragma once

#include <QObject>
#include <QStringList>
#include <array>
#include <functional>

// Every tag name the user has entered, in the order first added and without repeats (exact,
// case-sensitive comparison), kept in a keyed archive whose root is the list of names. It offers
// the names as completions in the editors' tag fields and backs the tag editor, whose field shows
// the whole list and replaces it when editing ends. The names on the records are independent of
// this list.
class TagStorage : public QObject {
    Q_OBJECT

public:
    // The panels whose tag field may end editing, in the order they are asked which is visible.
    enum class Panel { Project, Timer, FlatFee, TagEditor, None };

    explicit TagStorage(const QString &tagsPath, QObject *parent = nullptr);

    QString tagsPath() const { return m_tagsPath; }
    const QStringList &tags() const { return m_tags; }

    // Splits at every "," exactly as typed: no blanks trimmed, empty pieces kept (so "" is one
    // empty name).
    void addTagsFromString(const QString &text);
    // Appends the names not known yet, then saves.
    void addTagsFromArray(const QStringList &names);
    // The list becomes the text's names, without repeats; then saves.
    void setTagsFromString(const QString &text);

    // Replaces the list by the file's when the file exists; a missing file keeps the list. A file
    // that cannot be read keeps the list and is logged (false); a damaged one is first copied
    // beside itself, so that the next save loses none of it.
    bool loadTags();
    // Writes the list atomically; a failure is logged (false).
    bool saveTags();

    // The known names that start with the typed text (case-sensitive), in list order.
    QStringList completionsForSubstring(const QString &typed) const;
    // What the tag editor's field shows: all names joined by ",".
    QString editorFieldText() const { return m_tags.join(u','); }

    // A panel's tag field as the end of editing sees it: whether its panel is shown, and the
    // field's text.
    struct PanelField {
        std::function<bool()> isShown;
        std::function<QString()> text;
    };
    // The tag field of a panel, put in place by owner (a later one takes an earlier one's place)
    // and removed by the same owner.
    void setPanelField(Panel panel, const void *owner, const PanelField &field);
    void removePanelField(const void *owner);
    // Any panel's tag field ended editing: the first panel shown decides, with its own field's
    // text (controlTextDidEndEditing()).
    void tagFieldDidEndEditing();

    static Panel firstVisiblePanel(bool project, bool timer, bool flatFee, bool tagEditor);
    // A tag field ended editing: the first visible panel decides. The editors add their field's
    // names, the tag editor replaces the whole list by its field's names, and with no panel
    // visible the empty name is added.
    void controlTextDidEndEditing(Panel firstVisible, const QString &fieldText);

signals:
    // After every add, set and load, also when the names were all known: the tag editor's field
    // shows editorFieldText() again.
    void tagsChanged();

private:
    void appendNew(const QStringList &names);

    struct Registered {
        const void *owner = nullptr;
        PanelField field;
    };

    QString m_tagsPath;
    QStringList m_tags;
    // By panel: project, timer, flat fee, tag editor.
    std::array<Registered, 4> m_fields;
};
