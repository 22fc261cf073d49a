#include "desktop/MprisPlayerAdaptor.h"

#include "desktop/MprisPlayer.h"

MprisPlayerAdaptor::MprisPlayerAdaptor(MprisPlayer *player)
    : QDBusAbstractAdaptor(player)
    , m_player(player) {}

QString MprisPlayerAdaptor::playbackStatus() const {
    return m_player->playbackStatus();
}

QVariantMap MprisPlayerAdaptor::metadata() const {
    return m_player->metadata();
}

bool MprisPlayerAdaptor::hasTimer() const {
    return m_player->hasTimer();
}

void MprisPlayerAdaptor::PlayPause() {
    m_player->playPause();
}

void MprisPlayerAdaptor::Play() {
    m_player->play();
}

void MprisPlayerAdaptor::Pause() {
    m_player->pause();
}

void MprisPlayerAdaptor::Next() {
    m_player->next();
}

void MprisPlayerAdaptor::Previous() {
    m_player->previous();
}
