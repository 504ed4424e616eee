#include <tav/kernel/util/Exception.h>

#include <hull/i18n.h>
#include <hull/stacktrace.h>

#include <algorithm>
#include <mutex>
#include <sstream>
#include <utility>

namespace TAV {
namespace internal {

struct ExceptionTrace {
    void* frames[hull::stacktrace::kMaxFrames];
    std::size_t count = 0;
    // Formatting resolves symbols and lines: far dearer than the capture, so
    // it waits until someone reads the trace, and then happens once.
    std::once_flag formatted;
    std::string text;

    const std::string& format()
    {
        std::call_once(formatted, [this] {
            std::ostringstream out;
            hull::stacktrace::format(out, frames, count);
            text = out.str();
        });
        return text;
    }
};

} // namespace internal

namespace {

const char* const kAssertionId = "fen:tav:assertion";

bool gVerbose = false;

// The frames of the exception built last. Published without a lock, like the
// rest of the failure state.
struct LastTrace {
    void* frames[hull::stacktrace::kMaxFrames] = {};
    std::size_t count = 0;
    std::string text;
};
LastTrace gLastTrace;

std::shared_ptr<internal::ExceptionTrace> captureTrace()
{
    auto* record = new internal::ExceptionTrace;
    record->count = hull::stacktrace::capture(record->frames, hull::stacktrace::kMaxFrames);
    // Should the count's allocation fail, shared_ptr deletes the record.
    std::shared_ptr<internal::ExceptionTrace> trace(record);

    LastTrace published;
    std::copy_n(record->frames, record->count, published.frames);
    published.count = record->count;
    published.text = record->text;
    std::swap(gLastTrace, published);
    return trace;
}

} // namespace

Exception::Exception(const char* message)
    : Exception(std::string(message), std::string(kAssertionId)) {}

Exception::Exception(const std::string& message)
    : Exception(message, std::string(kAssertionId)) {}

Exception::Exception(const char* message, const char* id)
    : Exception(std::string(message), std::string(id)) {}

Exception::Exception(const std::string& message, const std::string& id)
    : message(message), id(id), trace(captureTrace()) {}

Exception::~Exception() = default;

Exception* Exception::clone() const
{
    return new Exception(*this);
}

void Exception::rethrow() const
{
    throw Exception(*this);
}

const char* Exception::what() const noexcept
{
    return message.c_str();
}

void Exception::convert_str(std::u16string& out) const
{
    out = GetUnicodeMessageTxt();
}

void Exception::convert_str(std::string& out) const
{
    out = hull::i18n::toUtf8(GetUnicodeMessageTxt());
}

std::u16string Exception::ToUstringImpl() const
{
    return GetUnicodeMessageTxt();
}

const std::string& Exception::GetID() const
{
    return id;
}

std::u16string Exception::GetUnicodeMessageTxt() const
{
    if (!gVerbose)
        return hull::i18n::toUtf16(message);
    return hull::i18n::toUtf16(message + "\n" + GetStackTrace());
}

const std::string& Exception::GetStackTrace() const
{
    return trace->format();
}

void Exception::writeExternal(BRIX::ObjectOutput& out) const
{
    out.write(message);
    out.write("\n");
}

ExceptionUnicode::ExceptionUnicode(const std::u16string& message)
    : Exception(std::string(), std::string()), unicodeMessage(message) {}

ExceptionUnicode* ExceptionUnicode::clone() const
{
    return new ExceptionUnicode(*this);
}

void ExceptionUnicode::rethrow() const
{
    throw ExceptionUnicode(*this);
}

std::u16string ExceptionUnicode::GetUnicodeMessageTxt() const
{
    if (!gVerbose)
        return unicodeMessage;
    return unicodeMessage + u"\n" + hull::i18n::toUtf16(GetStackTrace());
}

UserException::UserException(const char* message, const BaseMsgID& messageId)
    : Exception(std::string(message), messageId.key) {}

UserException::UserException(const std::string& message, const BaseMsgID& messageId)
    : Exception(message, messageId.key) {}

UserException::~UserException() = default;

DebugException::DebugException(const char* message) : Exception(message) {}
DebugException::DebugException(const std::string& message) : Exception(message) {}
DebugException::~DebugException() = default;

UnImplementedException::UnImplementedException(const char* message) : Exception(message) {}
UnImplementedException::UnImplementedException(const std::string& message) : Exception(message) {}
UnImplementedException::~UnImplementedException() = default;

std::string getLastExceptionStackTrace()
{
    if (gLastTrace.text.empty() && gLastTrace.count > 0) {
        std::ostringstream out;
        hull::stacktrace::format(out, gLastTrace.frames, gLastTrace.count);
        gLastTrace.text = out.str();
    }
    return gLastTrace.text;
}

bool setVerboseErrorMessage(bool verbose)
{
    return std::exchange(gVerbose, verbose);
}

} // namespace TAV
