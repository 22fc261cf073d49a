#include "desktop/MprisRootAdaptor.h"

#include "desktop/MprisPlayer.h"

MprisRootAdaptor::MprisRootAdaptor(MprisPlayer *player)
    : QDBusAbstractAdaptor(player)
    , m_player(player) {}

void MprisRootAdaptor::Raise() {
    m_player->raise();
}
