#include <tav/logger/ConsoleLogHandler.h>

#include <hull/console.h>

#include <ostream>

namespace TAV {

ConsoleLogHandler::ConsoleLogHandler() : LoggerLevelHandler(new ConsoleLogFormatter, new ConsoleLogFilter) {}

void ConsoleLogHandler::publish(const LogRecord& record)
{
    LogFormatter* formatter = getFormatter();
    if (!formatter)
        return;
    std::ostream& out = record.level.value() > LogLevel::Warning ? hull::console::out() : hull::console::err();
    out << formatter->format(record);
}

} // namespace TAV
