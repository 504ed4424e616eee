#pragma once

#include <tav/Export.h>
#include <tav/logger/LogLevel.h>

#include <memory>
#include <string>

namespace TAV {

class LogHandler;

class TAV_EXPORT LogRecord {
public:
    LogRecord(const LogLevel& aLevel, const std::string& aMessage) : level(aLevel), message(aMessage) {}

    LogLevel level;
    std::string message;
};

class TAV_EXPORT LogFormatter {
public:
    virtual std::string format(const LogRecord& record) = 0;
    // Text written before the first and after the last record.
    virtual std::string getHead(const LogHandler& handler);
    virtual std::string getTail(const LogHandler& handler);
    virtual ~LogFormatter();
};

class TAV_EXPORT LogFilter {
public:
    virtual bool isLoggable(const LogRecord& record) = 0;
    virtual ~LogFilter();
};

// A destination of log records. It decides, by its filter, which records it
// takes, and renders them by its formatter.
class TAV_EXPORT LogHandler {
public:
    virtual bool isLoggable(const LogRecord& record) = 0;
    // The handler owns its formatter and filter; setting one deletes the last.
    virtual void setFormatter(LogFormatter* formatter) = 0;
    virtual LogFormatter* getFormatter() = 0;
    virtual void setFilter(LogFilter* filter) = 0;
    virtual LogFilter* getFilter() = 0;
    virtual void setLevel(const LogLevel& level) = 0;
    virtual LogLevel getLevel() = 0;
    virtual void publish(const LogRecord& record) = 0;
    virtual ~LogHandler();
};

// The common part of the library's handlers: owned formatter and filter, and
// the logger's level as the handler's own.
class TAV_EXPORT LoggerLevelHandler : public LogHandler {
public:
    bool isLoggable(const LogRecord& record) override;
    void setFormatter(LogFormatter* formatter) override;
    LogFormatter* getFormatter() override;
    void setFilter(LogFilter* filter) override;
    LogFilter* getFilter() override;
    void setLevel(const LogLevel& level) override;
    LogLevel getLevel() override;
    ~LoggerLevelHandler() override;

protected:
    LoggerLevelHandler(LogFormatter* formatter, LogFilter* filter);

private:
    std::unique_ptr<LogFormatter> fFormatter;
    std::unique_ptr<LogFilter> fFilter;
};

// "[<level name>] <message>" and a line feed.
class TAV_EXPORT LevelPrefixFormatter : public LogFormatter {
public:
    std::string format(const LogRecord& record) override;
};

// Passes what is at or above the logger's threshold.
class TAV_EXPORT LoggerThresholdFilter : public LogFilter {
public:
    bool isLoggable(const LogRecord& record) override;
};

} // namespace TAV
