#include "TagStorage.h"

#include "../Logging.h"
#include "../platform/AtomicFile.h"
#include "KeyedArchiver.h"
#include "KeyedUnarchiver.h"

#include <QFile>
#include <QFileInfo>

namespace {

std::optional<QStringList> namesFrom(const QByteArray &bytes, QString *error) {
    const KeyedUnarchiver::Result result = KeyedUnarchiver::unarchive(bytes, {});
    if (!result.ok) {
        *error = result.error;
        return std::nullopt;
    }
    if (result.root.typeId() != QMetaType::QVariantList) {
        *error = QStringLiteral("The archive does not hold a list of tag names.");
        return std::nullopt;
    }
    QStringList names;
    for (const QVariant &element : result.root.toList()) {
        if (element.typeId() != QMetaType::QString) {
            *error = QStringLiteral("The archive's list holds something other than tag names.");
            return std::nullopt;
        }
        names.append(element.toString());
    }
    return names;
}

bool holds(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
}

// Copies a damaged file to "<name>.damaged" (numbered when an earlier, different copy is there).
void keepDamagedCopy(const QString &path, const QByteArray &bytes) {
    const QString base = path + QStringLiteral(".damaged");
    QString copy = base;
    for (int n = 2; QFileInfo::exists(copy); ++n) {
        if (holds(copy, bytes))
            return;
        copy = base + u'-' + QString::number(n);
    }
    const AtomicFile::Result written = AtomicFile::write(copy, bytes);
    if (written.ok)
        qCWarning(lcStores).noquote() << "kept the damaged" << path << "as" << copy;
    else
        qCWarning(lcStores).noquote() << written.error;
}

} // namespace

TagStorage::TagStorage(const QString &tagsPath, QObject *parent)
    : QObject(parent)
    , m_tagsPath(tagsPath) {}

void TagStorage::addTagsFromString(const QString &text) {
    addTagsFromArray(text.split(u','));
}

void TagStorage::addTagsFromArray(const QStringList &names) {
    appendNew(names);
    saveTags();
    emit tagsChanged();
}

void TagStorage::setTagsFromString(const QString &text) {
    m_tags.clear();
    addTagsFromString(text);
}

void TagStorage::appendNew(const QStringList &names) {
    for (const QString &name : names) {
        if (!m_tags.contains(name))
            m_tags.append(name);
    }
}

bool TagStorage::loadTags() {
    QFile file(m_tagsPath);
    bool ok = true;
    if (file.exists()) {
        if (file.open(QIODevice::ReadOnly)) {
            const QByteArray bytes = file.readAll();
            QString error;
            if (const auto names = namesFrom(bytes, &error)) {
                m_tags.clear();
                appendNew(*names);
            } else {
                qCWarning(lcStores).noquote() << "cannot read" << m_tagsPath << ":" << error;
                keepDamagedCopy(m_tagsPath, bytes);
                ok = false;
            }
        } else {
            qCWarning(lcStores).noquote()
                << "cannot read" << m_tagsPath << ":" << file.errorString();
            ok = false;
        }
    }
    emit tagsChanged();
    return ok;
}

bool TagStorage::saveTags() {
    const AtomicFile::Result written =
        AtomicFile::write(m_tagsPath, KeyedArchiver::archivedData(QVariant(m_tags)));
    if (!written.ok)
        qCWarning(lcStores).noquote() << written.error;
    return written.ok;
}

QStringList TagStorage::completionsForSubstring(const QString &typed) const {
    QStringList completions;
    for (const QString &name : m_tags) {
        if (name.startsWith(typed))
            completions.append(name);
    }
    return completions;
}

void TagStorage::setPanelField(Panel panel, const void *owner, const PanelField &field) {
    if (panel != Panel::None)
        m_fields[size_t(panel)] = {owner, field};
}

void TagStorage::removePanelField(const void *owner) {
    for (Registered &registered : m_fields) {
        if (registered.owner == owner)
            registered = {};
    }
}

void TagStorage::tagFieldDidEndEditing() {
    const auto shown = [this](Panel panel) {
        const Registered &registered = m_fields[size_t(panel)];
        return registered.owner && registered.field.isShown();
    };
    const Panel first = firstVisiblePanel(shown(Panel::Project), shown(Panel::Timer),
                                          shown(Panel::FlatFee), shown(Panel::TagEditor));
    controlTextDidEndEditing(first, first == Panel::None ? QString()
                                                         : m_fields[size_t(first)].field.text());
}

TagStorage::Panel TagStorage::firstVisiblePanel(bool project, bool timer, bool flatFee,
                                                bool tagEditor) {
    if (project)
        return Panel::Project;
    if (timer)
        return Panel::Timer;
    if (flatFee)
        return Panel::FlatFee;
    return tagEditor ? Panel::TagEditor : Panel::None;
}

void TagStorage::controlTextDidEndEditing(Panel firstVisible, const QString &fieldText) {
    switch (firstVisible) {
    case Panel::Project:
    case Panel::Timer:
    case Panel::FlatFee:
        addTagsFromString(fieldText);
        break;
    case Panel::TagEditor:
        setTagsFromString(fieldText);
        break;
    case Panel::None:
        addTagsFromString(QString());
        break;
    }
}
