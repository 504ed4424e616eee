#include <tav/logger/ConsoleLogHandler.h>
#include <tav/logger/Logger.h>

#include <tav/kernel/util/Asserter.h>

#include <BRIX/ModuleObjectDeleter.h>
#include <boost/container/small_vector.hpp>
#include <hull/format.h>

#include <cstring>
#include <unordered_set>

namespace TAV {
namespace {

using HandlerSet = std::unordered_set<LogHandler*>;

Logger* gLogger = nullptr;
HandlerSet* gHandlers = nullptr;
ConsoleLogHandler* gTestHandler = nullptr;

// Created on first use, released with the library's other singletons.
template<class T>
T& singleton(T*& slot, T* (*make)())
{
    if (!slot) {
        slot = make();
        BRIX::ModuleObjectDeleter::registerForCleanup(+[](void* p) {
            T** held = static_cast<T**>(p);
            delete *held;
            *held = nullptr;
        }, &slot);
    }
    return *slot;
}

HandlerSet& handlers()
{
    return singleton<HandlerSet>(gHandlers, [] { return new HandlerSet; });
}

} // namespace

Logger::Logger() : level(LogLevel::Info), fBuffer{} {}

Logger& Logger::instance()
{
    return singleton<Logger>(gLogger, [] { return new Logger; });
}

void Logger::addHandler(LogHandler* handler)
{
    Asserter::Make<Exception>(handler != nullptr, "Failed to register null LogHandler").handle("logger/Logger", __LINE__, "");
    handlers().insert(handler);
}

void Logger::removeHandler(LogHandler* handler)
{
    Asserter::Make<Exception>(handler != nullptr, "Failed to remove null LogHandler").handle("logger/Logger", __LINE__, "");
    handlers().erase(handler);
}

void Logger::vlog(const LogLevel& aLevel, const char* format, va_list args)
{
    if (hull::formatBounded(fBuffer, sizeof fBuffer, format, args) < 0)
        std::memset(fBuffer, 0, sizeof fBuffer);
    publish(aLevel, fBuffer);
}

void Logger::publish(const LogLevel& aLevel, const char* message)
{
    if (aLevel == LogLevel::Off)
        return;
    const LogRecord record(aLevel, message);
    // A handler may add or remove handlers, itself included, while it
    // publishes: walk a copy, and pass over any that has gone meanwhile.
    const HandlerSet& registered = handlers();
    const boost::container::small_vector<LogHandler*, 8> walk(registered.begin(), registered.end());
    for (LogHandler* handler : walk) {
        if (registered.contains(handler) && handler->isLoggable(record))
            handler->publish(record);
    }
}

void Logger::setTestMode()
{
    instance().addHandler(&singleton<ConsoleLogHandler>(gTestHandler, [] { return new ConsoleLogHandler; }));
}

void Logger::resetTestMode()
{
    if (gTestHandler)
        instance().removeHandler(gTestHandler);
}

} // namespace TAV

namespace {

void logv(const TAV::LogLevel& level, const char* format, va_list args) __attribute__((format(printf, 2, 0)));
void logv(const TAV::LogLevel& level, const char* format, va_list args)
{
    TAV::Logger::instance().vlog(level, format, args);
}

} // namespace

#define TAV_LOG_AT(Name, Level)                   \
    void Name(const char* format, ...)            \
    {                                             \
        va_list args;                             \
        va_start(args, format);                   \
        logv(TAV::LogLevel::Level, format, args); \
        va_end(args);                             \
    }

TAV_LOG_AT(tavLogFatal, Fatal)
TAV_LOG_AT(tavLogError, Error)
TAV_LOG_AT(tavLogWarning, Warning)
TAV_LOG_AT(tavLogInfo, Info)
TAV_LOG_AT(tavLogDebug, Debug)
TAV_LOG_AT(tavLogTrace, Trace)
#undef TAV_LOG_AT

void tavLog(const TAV::LogLevel& level, const char* format, ...)
{
    va_list args;
    va_start(args, format);
    logv(level, format, args);
    va_end(args);
}
