#pragma once

#include <tav/logger/LogHandler.h>

#include <fstream>
#include <string>

namespace TAV {

class TAV_EXPORT FileLogFormatter : public LevelPrefixFormatter {};
class TAV_EXPORT FileLogFilter : public LoggerThresholdFilter {};

// Writes to "tavLog.<process id>" in the temporary directory, truncated when
// the handler is made. A file that cannot be opened makes writes no-ops.
class TAV_EXPORT FileLogHandler : public LoggerLevelHandler {
public:
    FileLogHandler();
    void publish(const LogRecord& record) override;
    const std::string& getPath() const { return fPath; }

private:
    std::string fPath;
    std::ofstream fStream;
};

} // namespace TAV
