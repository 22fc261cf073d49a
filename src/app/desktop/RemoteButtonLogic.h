#pragma once

// What each button of the remote does, in the main window and in the mini window. Up and down
// act when the button is let go; the other buttons act on their one burst.
class RemoteButtonLogic {
public:
    enum class Action {
        None,
        // The main window's list.
        SelectPrevious,
        SelectNext,
        PauseOrResume,
        Expand,
        Collapse,
        // The windows.
        ShowMiniWindow,
        ShowMainWindow,
        // The mini window.
        Up,
        Down,
        Play,
        // A button the remote table does not have.
        Unmapped,
    };

    static Action mainWindowAction(int button, bool pressed);
    static Action miniWindowAction(int button, bool pressed);

    // The row the selection goes to among rows rows (current -1 for none): up from the first
    // row or from none is the last row, down from the last or from none the first; -1 without
    // rows.
    static int previousRow(int current, int rows);
    static int nextRow(int current, int rows);
};
