#pragma once

#include "MPSearchCriterion.h"

#include <QList>
#include <QVariantMap>
#include <optional>

// Criteria combined under a match mode (0 all must match, 1 any must match) and run over a list
// of entries or projects: all matches, or stepping to the next or previous match with wrapping;
// in text mode (search mode 5) it finds occurrences of a string in a text instead.
class MPSearchQuery : public KeyedCoding {
public:
    using Pointer = std::shared_ptr<MPSearchQuery>;

    enum SearchMode { FirstMatch = 0, AllMatches = 1, LastMatch = 2, TextMode = 5 };

    MPSearchQuery() = default;
    static Pointer searchQueryForObjectsContainingString(const QString &text);
    static Pointer searchQueryForTextContainingString(const QString &text);
    // An independent copy: written to an archive and read back.
    Pointer copy() const;

    int matchMode() const { return _matchMode; }
    void setMatchMode(int mode) { _matchMode = mode; }
    int searchMode() const { return _searchMode; }
    void setSearchMode(int mode) { _searchMode = mode; }
    bool wraps() const { return _wraps; }
    void setWraps(bool wraps) { _wraps = wraps; }
    void reset() { _objIndex = 0; }
    int foundObjectIndex() const { return _objIndex - 1; }

    int addCriterion(const MPSearchCriterion::Pointer &criterion);
    int criteriaCount() const { return _criteria ? int(_criteria->size()) : 0; }
    void removeCriterion(const MPSearchCriterion::Pointer &criterion);
    void removeCriterionAtIndex(int index);
    MPSearchCriterion::Pointer criterionAtIndex(int index) const;

    bool queryMatchesObject(const KeyValueCoding *object) const;

    // The matching objects in walk order (back to front in search mode 2; only the first found in
    // modes 0 and 2, which also set the found position); no list at all for an empty list or a
    // query without criteria.
    template <typename T>
    std::optional<QList<std::shared_ptr<T>>>
    findAllMatchingObjectsIn(const QList<std::shared_ptr<T>> &objects);
    template <typename T>
    std::shared_ptr<T> findNextMatchingObjectIn(const QList<std::shared_ptr<T>> &objects);
    template <typename T>
    std::shared_ptr<T> findPrevMatchingObjectIn(const QList<std::shared_ptr<T>> &objects);

    // Text mode: the range of criterion 0's match in text from the position (not-found location
    // 0x7fffffff otherwise).
    RangeValue queryMatchesText(const QString &text, qsizetype from) const;
    // Text mode: the next match from the found position, wrapping to the start once; the next
    // search starts one character past the match's end.
    RangeValue findNextMatchInText(const QString &text);

    void addAuxiliaryDataObject(const QVariant &value, const QString &key);
    QVariant auxiliaryDataObjectForKey(const QString &key) const;
    void setAuxiliaryDataBooleanValue(bool value, const QString &key);
    bool auxiliaryDataBooleanValueForKey(const QString &key) const;
    void setAuxiliaryDataIntegerValue(int value, const QString &key);
    int auxiliaryDataIntegerValueForKey(const QString &key) const;
    void setAuxiliaryDataFloatValue(float value, const QString &key);
    float auxiliaryDataFloatValueForKey(const QString &key) const;

    QString description() const;

    QString className() const override { return QStringLiteral("MPSearchQuery"); }
    void encodeWithCoder(KeyedArchiver &coder) const override;
    static KeyedObject initWithCoder(KeyedUnarchiver &coder);

private:
    int _matchMode = 0;
    int _searchMode = AllMatches;
    int _objIndex = 0;
    bool _wraps = true;
    std::optional<QList<MPSearchCriterion::Pointer>> _criteria;
    std::optional<QVariantMap> _auxData;
};

template <typename T>
std::optional<QList<std::shared_ptr<T>>>
MPSearchQuery::findAllMatchingObjectsIn(const QList<std::shared_ptr<T>> &objects) {
    if (criteriaCount() == 0 || objects.isEmpty())
        return std::nullopt;
    QList<std::shared_ptr<T>> found;
    const bool backwards = _searchMode == LastMatch;
    const bool firstOnly = _searchMode == FirstMatch || _searchMode == LastMatch;
    const qsizetype count = objects.size();
    for (qsizetype n = 0; n < count; ++n) {
        const qsizetype i = backwards ? count - 1 - n : n;
        if (!queryMatchesObject(objects[i].get()))
            continue;
        found.append(objects[i]);
        if (firstOnly) {
            _objIndex = int(i) + 1;
            break;
        }
    }
    return found;
}

template <typename T>
std::shared_ptr<T>
MPSearchQuery::findNextMatchingObjectIn(const QList<std::shared_ptr<T>> &objects) {
    if (criteriaCount() == 0 || objects.isEmpty())
        return nullptr;
    const int count = int(objects.size());
    for (int i = std::max(_objIndex, 0); i < count; ++i) {
        if (queryMatchesObject(objects[i].get())) {
            _objIndex = i + 1;
            return objects[i];
        }
    }
    if (_wraps && _objIndex >= 1) {
        for (int i = 0; i < std::min(_objIndex, count); ++i) {
            if (queryMatchesObject(objects[i].get())) {
                _objIndex = i + 1;
                return objects[i];
            }
        }
    }
    return nullptr;
}

template <typename T>
std::shared_ptr<T>
MPSearchQuery::findPrevMatchingObjectIn(const QList<std::shared_ptr<T>> &objects) {
    if (criteriaCount() == 0 || objects.isEmpty())
        return nullptr;
    const int count = int(objects.size());
    const int s = _objIndex == 0 ? count + 1 : _objIndex;
    for (int i = std::min(s - 2, count - 1); i >= 0; --i) {
        if (queryMatchesObject(objects[i].get())) {
            _objIndex = i + 1;
            return objects[i];
        }
    }
    if (_wraps && s <= count) {
        for (int i = count - 1; i >= s + 1; --i) {
            if (queryMatchesObject(objects[i].get())) {
                _objIndex = i + 1;
                return objects[i];
            }
        }
    }
    return nullptr;
}
