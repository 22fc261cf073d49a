#pragma once

#include <QStringList>
#include <optional>

// The attached file paths of a project, entry or flat fee, without duplicates. A missing list (as
// opposed to an empty one) makes adding and removing log and do nothing.
class AttachmentList {
public:
    QStringList paths() const { return m_paths.value_or(QStringList()); }
    bool exists() const { return m_paths.has_value(); }
    void set(const std::optional<QStringList> &paths) { m_paths = paths; }
    // Adds each path not yet in the list, in the given order.
    void add(const QStringList &paths);
    void remove(const QStringList &paths);

private:
    std::optional<QStringList> m_paths = QStringList();
};
