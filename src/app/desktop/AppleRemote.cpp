#include "desktop/AppleRemote.h"

#include "Logging.h"

using namespace Qt::StringLiterals;

AppleRemote::AppleRemote(int tableVersion, QObject *parent)
    : QObject(parent)
    , m_mapping(mappingForVersion(tableVersion)) {}

QHash<QString, int> AppleRemote::mappingForVersion(int tableVersion) {
    QHash<QString, int> mapping;
    if (tableVersion == 4) {
        mapping.insert(u"14_12_11_6_5_"_s, 0);
        mapping.insert(u"14_13_11_6_5_"_s, 1);
        mapping.insert(u"14_7_6_5_14_7_6_5_"_s, 2);
        mapping.insert(u"14_8_6_5_14_8_6_5_"_s, 3);
        mapping.insert(u"14_9_6_5_14_9_6_5_"_s, 4);
        mapping.insert(u"14_10_6_5_14_10_6_5_"_s, 5);
        mapping.insert(u"14_6_5_4_2_"_s, 6);
        mapping.insert(u"14_6_5_3_2_"_s, 7);
        mapping.insert(u"14_6_5_14_6_5_"_s, 8);
        mapping.insert(u"18_14_6_5_18_14_6_5_"_s, 9);
    } else if (tableVersion == 5) {
        mapping.insert(u"31_29_28_18_"_s, 0);
        mapping.insert(u"31_30_28_18_"_s, 1);
        mapping.insert(u"31_20_18_31_20_18_"_s, 2);
        // Entered for 3 and again for 9, which replaces it: 3 never comes from this table.
        mapping.insert(u"31_21_18_31_21_18_"_s, 3);
        mapping.insert(u"31_22_18_31_22_18_"_s, 4);
        mapping.insert(u"31_23_18_31_23_18_"_s, 5);
        mapping.insert(u"31_18_4_2_"_s, 6);
        mapping.insert(u"31_18_3_2_"_s, 7);
        mapping.insert(u"31_18_31_18_"_s, 8);
        mapping.insert(u"31_21_18_31_21_18_"_s, 9);
    } else {
        return mapping;
    }
    mapping.insert(u"19_"_s, identityButton);
    return mapping;
}

void AppleRemote::handleBurst(const Burst &burst) {
    QString cookies;
    int sum = 0;
    for (const Event &event : burst) {
        if (event.cookie == identityCookie) {
            m_remoteId = event.value;
            handleCookieString(u"19_"_s, 0);
        } else {
            cookies += QString::number(event.cookie) + u'_';
            sum += event.value;
        }
    }
    handleCookieString(cookies, sum);
}

void AppleRemote::handleCookieString(const QString &cookieString, int sumOfValues) {
    const auto button = m_mapping.constFind(cookieString);
    if (button == m_mapping.cend()) {
        qCWarning(lcDesktop, "Unknown button for cookiestring %s", qUtf8Printable(cookieString));
        return;
    }
    emit appleRemoteButton(*button, sumOfValues >= 1);
}
