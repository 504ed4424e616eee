#include <tav/logger/FileLogHandler.h>

#include <hull/filesystem.h>

namespace TAV {

FileLogHandler::FileLogHandler()
    : LoggerLevelHandler(new FileLogFormatter, new FileLogFilter),
      fPath(hull::filesystem::tempDirectory() + "/tavLog." + std::to_string(hull::filesystem::processId())),
      fStream(fPath, std::ios::out | std::ios::trunc)
{
}

void FileLogHandler::publish(const LogRecord& record)
{
    LogFormatter* formatter = getFormatter();
    if (!formatter || !fStream)
        return;
    fStream << formatter->format(record);
    fStream.flush();
}

} // namespace TAV
