#include "desktop/RemoteButtonLogic.h"

namespace {

constexpr int lastButton = 10;

} // namespace

RemoteButtonLogic::Action RemoteButtonLogic::mainWindowAction(int button, bool pressed) {
    switch (button) {
    case 0:
        return pressed ? Action::None : Action::SelectPrevious;
    case 1:
        return pressed ? Action::None : Action::SelectNext;
    case 2:
        return Action::ShowMiniWindow;
    case 3:
    case 9:
        return Action::PauseOrResume;
    case 4:
        return Action::Expand;
    case 5:
        return Action::Collapse;
    default:
        return button > lastButton ? Action::Unmapped : Action::None;
    }
}

RemoteButtonLogic::Action RemoteButtonLogic::miniWindowAction(int button, bool pressed) {
    switch (button) {
    case 0:
        return pressed ? Action::None : Action::Up;
    case 1:
        return pressed ? Action::None : Action::Down;
    case 2:
        return Action::ShowMainWindow;
    case 3:
    case 9:
        return Action::Play;
    default:
        return button > lastButton ? Action::Unmapped : Action::None;
    }
}

int RemoteButtonLogic::previousRow(int current, int rows) {
    if (rows <= 0)
        return -1;
    return current <= 0 || current >= rows ? rows - 1 : current - 1;
}

int RemoteButtonLogic::nextRow(int current, int rows) {
    if (rows <= 0)
        return -1;
    return current < 0 || current >= rows - 1 ? 0 : current + 1;
}
