#include <tav/kernel/util/Asserter.h>

#include <hull/format.h>
#include <hull/i18n.h>

#include <cstdarg>
#include <cstring>
#include <sstream>

namespace TAV {

char Asserter::fLogBuf[4097];

namespace {

void formatLogBuf(const char* format, va_list args)
{
    // A broken format leaves an empty message rather than a half-written one.
    if (hull::formatBounded(Asserter::fLogBuf, sizeof Asserter::fLogBuf, format, args) == -1)
        std::memset(Asserter::fLogBuf, 0, sizeof Asserter::fLogBuf);
}

std::string located(const char* head, const char* file, int line, const char* expression)
{
    std::ostringstream text;
    text << head << " at " << file << ":" << line << ": " << expression;
    return text.str();
}

} // namespace

Asserter::~Asserter() = default;

void Asserter::raise(const char* file, int line, const char* expression) const
{
    throw Exception(located("Assertion failed", file, line, expression));
}

template<class E>
AsserterEx<E> Asserter::Make(bool condition, const char* format, ...)
{
    if (!condition) {
        va_list args;
        va_start(args, format);
        formatLogBuf(format, args);
        va_end(args);
    }
    return AsserterEx<E>(condition);
}

template<class E>
AsserterEx<E> Asserter::MakeAlways(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    formatLogBuf(format, args);
    va_end(args);
    return AsserterEx<E>(false);
}

template<class E>
void AsserterEx<E>::raise(const char* file, int line, const char* expression) const
{
    throw E(located((std::string("Assertion failed: ") + fLogBuf).c_str(), file, line, expression));
}

void AsserterEx<ExceptionUnicode>::raise(const char* file, int line, const char* expression) const
{
    const std::string head = located("Assertion failed", file, line, expression) + "\n";
    throw ExceptionUnicode(hull::i18n::toUtf16(head) + fText);
}

void AsserterEx<UserException>::raise(const char*, int, const char*) const
{
    throw UserException(fLogBuf, fMessage);
}

template class AsserterEx<Exception>;
template class AsserterEx<UnImplementedException>;
template AsserterEx<Exception> Asserter::Make<Exception>(bool, const char*, ...);
template AsserterEx<Exception> Asserter::MakeAlways<Exception>(const char*, ...);
template AsserterEx<UnImplementedException> Asserter::MakeAlways<UnImplementedException>(const char*, ...);

} // namespace TAV
