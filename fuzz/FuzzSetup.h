#pragma once

// What every harness needs before its first input: an application object for the Qt code that
// asks for one, and no log output, which would cost more time than the reading itself.
class FuzzSetup {
public:
    static void prepare();
};
