#include <tav/logger/LogHandler.h>
#include <tav/logger/Logger.h>

namespace TAV {

const char* LogLevel::getLevelName(int value)
{
    switch (value) {
    case Off: return "Off";
    case Fatal: return "Fatal";
    case Error: return "Error";
    case Warning: return "Warning";
    case Info: return "Info";
    case Debug: return "Debug";
    case Trace: return "Trace";
    case All: return "All";
    default: return "Unknown Level";
    }
}

std::string LogFormatter::getHead(const LogHandler&)
{
    return {};
}

std::string LogFormatter::getTail(const LogHandler&)
{
    return {};
}

LogFormatter::~LogFormatter() = default;
LogFilter::~LogFilter() = default;
LogHandler::~LogHandler() = default;

LoggerLevelHandler::LoggerLevelHandler(LogFormatter* formatter, LogFilter* filter)
    : fFormatter(formatter), fFilter(filter) {}

LoggerLevelHandler::~LoggerLevelHandler() = default;

bool LoggerLevelHandler::isLoggable(const LogRecord& record)
{
    return !fFilter || fFilter->isLoggable(record);
}

void LoggerLevelHandler::setFormatter(LogFormatter* formatter)
{
    fFormatter.reset(formatter);
}

LogFormatter* LoggerLevelHandler::getFormatter()
{
    return fFormatter.get();
}

void LoggerLevelHandler::setFilter(LogFilter* filter)
{
    fFilter.reset(filter);
}

LogFilter* LoggerLevelHandler::getFilter()
{
    return fFilter.get();
}

void LoggerLevelHandler::setLevel(const LogLevel& level)
{
    Logger::instance().setLevel(level);
}

LogLevel LoggerLevelHandler::getLevel()
{
    return Logger::instance().getLevel();
}

std::string LevelPrefixFormatter::format(const LogRecord& record)
{
    return std::string("[") + record.level.getLevelName() + "] " + record.message + "\n";
}

bool LoggerThresholdFilter::isLoggable(const LogRecord& record)
{
    return Logger::instance().getLevel().value() >= record.level.value();
}

} // namespace TAV
