#pragma once

#include "desktop/AppleRemote.h"

// The keys of remotes and media keys as the bursts of the remote's version-5 table: up and down
// (volume up and down, the arrows) send a press and a release; menu, play (play/pause, OK),
// right (next) and left (previous) send one burst when pressed, and menu, right and left their
// hold forms when held.
class RemoteKeys {
public:
    // A key's event (input-event codes): value 1 pressed, 0 released, 2 held (the first repeat);
    // held tells whether the key was held before it was released. Empty for other keys.
    static AppleRemote::Burst burstForKey(int code, int value, bool held);
};
