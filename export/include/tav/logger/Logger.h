#pragma once

#include <tav/Export.h>
#include <tav/logger/LogHandler.h>
#include <tav/logger/LogLevel.h>

#include <cstdarg>

namespace TAV {

// The one sink of diagnostic text. A message is formatted once and offered
// to every registered handler; none is registered by default. Not locked.
class TAV_EXPORT Logger {
public:
    static Logger& instance();

    // The set does not own handlers; remove one before destroying it.
    void addHandler(LogHandler* handler);
    void removeHandler(LogHandler* handler);

    void vlog(const LogLevel& level, const char* format, va_list args) __attribute__((format(printf, 3, 0)));
    void publish(const LogLevel& level, const char* message);

    // The threshold that the library's handlers apply; Info at start.
    const LogLevel& getLevel() const { return level; }
    void setLevel(const LogLevel& aLevel) { level = aLevel; }

    // Registers one console handler for the process, made on first use;
    // resetTestMode unregisters it without deleting it.
    static void setTestMode();
    static void resetTestMode();

    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;

private:
    Logger();

    LogLevel level;
    char fBuffer[4096];
};

} // namespace TAV

TAV_EXPORT void tavLog(const TAV::LogLevel& level, const char* format, ...) __attribute__((format(printf, 2, 3)));
TAV_EXPORT void tavLogFatal(const char* format, ...) __attribute__((format(printf, 1, 2)));
TAV_EXPORT void tavLogError(const char* format, ...) __attribute__((format(printf, 1, 2)));
TAV_EXPORT void tavLogWarning(const char* format, ...) __attribute__((format(printf, 1, 2)));
TAV_EXPORT void tavLogInfo(const char* format, ...) __attribute__((format(printf, 1, 2)));
TAV_EXPORT void tavLogDebug(const char* format, ...) __attribute__((format(printf, 1, 2)));
TAV_EXPORT void tavLogTrace(const char* format, ...) __attribute__((format(printf, 1, 2)));
