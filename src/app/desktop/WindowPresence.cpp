#include "desktop/WindowPresence.h"

#include "platform/Preferences.h"
#include "platform/UserAlerts.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {

const QString silencedKey = u"silenceKeepsRunningNotice"_s;

QString tr(const char *text) {
    return QCoreApplication::translate("WindowPresence", text);
}

} // namespace

WindowPresence::WindowPresence(Preferences &preferences, UserAlerts &alerts)
    : m_preferences(preferences)
    , m_alerts(alerts) {}

WindowPresence::Window WindowPresence::windowToReopen() const {
    return m_preferences.boolForKey(u"showMiniWindow") ? Window::Mini : Window::Main;
}

WindowPresence::Window WindowPresence::toggleMiniWindow(bool miniWindowVisible) {
    m_preferences.setObject(!miniWindowVisible, u"showMiniWindow");
    return miniWindowVisible ? Window::Main : Window::Mini;
}

void WindowPresence::mainWindowChosen() {
    m_preferences.setObject(false, u"showMiniWindow");
}

void WindowPresence::mainWindowClosed(bool trayAvailable) {
    if (trayAvailable || m_explained || m_preferences.boolForKey(silencedKey))
        return;
    m_explained = true;
    const int answer = m_alerts.runModal(
        {tr("Hourfold keeps running."),
         tr("Your timers go on while the window is closed. Start Hourfold again from the "
            "applications menu or with the command hourfold to bring the window back; Quit in the "
            "File menu (Ctrl+Q) ends the program."),
         UserAlerts::Style::Informational,
         {tr("OK"), tr("Don't Tell Me Again")}});
    if (answer == UserAlerts::firstButton + 1)
        m_preferences.setObject(true, silencedKey);
}
