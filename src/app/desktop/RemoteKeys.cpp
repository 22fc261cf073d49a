#include "desktop/RemoteKeys.h"

#include <linux/input-event-codes.h>

namespace {

// The version-5 cookies of each remote button.
const QList<int> upCookies{31, 29, 28, 18};
const QList<int> downCookies{31, 30, 28, 18};
const QList<int> menuCookies{31, 20, 18, 31, 20, 18};
const QList<int> playCookies{31, 21, 18, 31, 21, 18};
const QList<int> rightCookies{31, 22, 18, 31, 22, 18};
const QList<int> leftCookies{31, 23, 18, 31, 23, 18};
const QList<int> rightHoldCookies{31, 18, 4, 2};
const QList<int> leftHoldCookies{31, 18, 3, 2};
const QList<int> menuHoldCookies{31, 18, 31, 18};

enum class Kind { None, UpDown, Click };

struct KeyForm {
    Kind kind = Kind::None;
    const QList<int> *cookies = nullptr;
    const QList<int> *holdCookies = nullptr;
};

KeyForm formOfKey(int code) {
    switch (code) {
    case KEY_VOLUMEUP:
    case KEY_UP:
        return {Kind::UpDown, &upCookies};
    case KEY_VOLUMEDOWN:
    case KEY_DOWN:
        return {Kind::UpDown, &downCookies};
    case KEY_MENU:
        return {Kind::Click, &menuCookies, &menuHoldCookies};
    case KEY_PLAYPAUSE:
    case KEY_PLAY:
    case KEY_PAUSE:
    case KEY_OK:
    case KEY_SELECT:
        return {Kind::Click, &playCookies};
    case KEY_NEXTSONG:
    case KEY_RIGHT:
    case KEY_FASTFORWARD:
        return {Kind::Click, &rightCookies, &rightHoldCookies};
    case KEY_PREVIOUSSONG:
    case KEY_LEFT:
    case KEY_REWIND:
        return {Kind::Click, &leftCookies, &leftHoldCookies};
    default:
        return {};
    }
}

// Every event of the burst carries the value; a click's second half is its release.
AppleRemote::Burst burstOf(const QList<int> &cookies, int value, bool clickRelease = false) {
    AppleRemote::Burst burst;
    for (qsizetype i = 0; i < cookies.size(); ++i)
        burst.append({cookies.at(i), clickRelease && i >= cookies.size() / 2 ? 0 : value});
    return burst;
}

} // namespace

AppleRemote::Burst RemoteKeys::burstForKey(int code, int value, bool held) {
    const KeyForm form = formOfKey(code);
    switch (form.kind) {
    case Kind::None:
        return {};
    case Kind::UpDown:
        return value == 2 ? AppleRemote::Burst() : burstOf(*form.cookies, value);
    case Kind::Click:
        break;
    }
    if (value == 1)
        return burstOf(*form.cookies, 1, true);
    if (!form.holdCookies || (value == 0 && !held))
        return {};
    return burstOf(*form.holdCookies, value == 2 ? 1 : 0);
}
