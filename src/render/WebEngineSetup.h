#pragma once

// Prepares the process for Qt WebEngine. Call it first in main(), before the application object
// exists, since Chromium reads its settings when it starts.
class WebEngineSetup {
public:
    // As root, Chromium refuses to start with its sandbox on: then (and only then) the sandbox is
    // switched off for this process. On the offscreen platform there is no GPU to draw with, so
    // Chromium is told not to use one. Settings already in the environment are kept.
    static void prepareProcess();
};
