#pragma once

#include <QList>
#include <QRect>
#include <QString>
#include <memory>

class Entry;
class ProjectCollection;

// The mini window's list without the window: the running and paused timers in the document's
// order, the selected one, and where the list stands in the window's three-row opening. The
// selected line always shows in the opening's top row: each step moves the list by a row, and
// the rows scrolled out above are cut off the list area (shrinkCounter of them).
class MiniWindowLogic {
public:
    static constexpr int rowHeight = 30;
    static constexpr int openingRows = 3;

    explicit MiniWindowLogic(ProjectCollection &collection);

    // Takes the timers anew. The selected timer stays selected; when it is gone, the one before
    // its place is.
    void reloadData();

    // One row up or down; false when the selection is already at that end.
    bool up();
    bool down();
    // Pauses the selected timer when it runs, resumes it when it is paused.
    void play();
    void playOfItem(const std::shared_ptr<Entry> &entry);

    static void pauseOrResume(Entry &entry, ProjectCollection &collection);
    // The live duration of a running entry: the minutes since its start less its pauses in that
    // time, as "hh:mm".
    static QString durationString(const Entry &entry);
    // "Project: hh:mm", as reminders and the media player name a timer.
    static QString projectAndDuration(const Entry &entry);

    const QList<std::shared_ptr<Entry>> &listItems() const { return m_listItems; }
    int selectedIndex() const { return m_selectedIndex; }
    std::shared_ptr<Entry> selectedEntry() const { return m_listItems.value(m_selectedIndex); }
    int shrinkCounter() const { return m_shrinkCounter; }

    bool isSelectorVisible() const { return !m_listItems.isEmpty(); }
    bool isUpEnabled() const { return m_selectedIndex > 0; }
    bool isDownEnabled() const { return m_selectedIndex < m_listItems.size() - 1; }

    // The list area in the opening's coordinates (y downwards from the opening's top), for an
    // opening of the width; line i sits at lineTop(i) inside it.
    QRect listFrame(int width) const;
    int lineTop(int index) const { return (index - m_shrinkCounter) * rowHeight; }

private:
    ProjectCollection &m_collection;
    QList<std::shared_ptr<Entry>> m_listItems;
    int m_selectedIndex = 0;
    int m_shrinkCounter = 0;
};
