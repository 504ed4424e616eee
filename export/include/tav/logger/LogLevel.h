#pragma once

#include <tav/Export.h>

#include <compare>

namespace TAV {

class TAV_EXPORT LogLevel {
public:
    enum Verbosity {
        Off = 0,
        Fatal = 1,
        Error = 2,
        Warning = 4,
        Info = 8,
        Debug = 16,
        Trace = 32,
        All = 2147483647
    };

    LogLevel(Verbosity verbosity) : fVerbosity(verbosity) {}

    Verbosity getVerbosity() const { return fVerbosity; }
    int value() const { return fVerbosity; }
    const char* getLevelName() const { return getLevelName(fVerbosity); }
    // "Unknown Level" for a value that is not one of the Verbosity values.
    static const char* getLevelName(int value);

    friend bool operator==(const LogLevel& a, const LogLevel& b) { return a.value() == b.value(); }
    friend std::strong_ordering operator<=>(const LogLevel& a, const LogLevel& b) { return a.value() <=> b.value(); }

private:
    Verbosity fVerbosity;
};

} // namespace TAV
