#pragma once

#include <tav/logger/LogHandler.h>

namespace TAV {

class TAV_EXPORT ConsoleLogFormatter : public LevelPrefixFormatter {};
class TAV_EXPORT ConsoleLogFilter : public LoggerThresholdFilter {};

// Info and more detailed levels to the console's output stream; warnings,
// errors and fatal failures to its error stream.
class TAV_EXPORT ConsoleLogHandler : public LoggerLevelHandler {
public:
    ConsoleLogHandler();
    void publish(const LogRecord& record) override;
};

} // namespace TAV
