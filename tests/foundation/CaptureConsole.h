#pragma once

#include <hull/console.h>

#include <sstream>

// Takes the console's streams for the lifetime of a test.
struct CaptureConsole {
    std::ostringstream out;
    std::ostringstream err;
    std::ostream* previousOut = hull::console::setOut(&out);
    std::ostream* previousErr = hull::console::setErr(&err);
    ~CaptureConsole()
    {
        hull::console::setOut(previousOut);
        hull::console::setErr(previousErr);
    }
};
