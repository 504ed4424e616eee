#pragma once

#include <tav/Export.h>

#include <BRIX/BaseMsgID.h>
#include <BRIX/ObjectOutput.h>
#include <BRIX/UserExceptionBase.h>

#include <memory>
#include <string>

namespace TAV {

using BRIX::BaseMsgID;

namespace internal {
struct ExceptionTrace;
}

// The root of the library's failures. Every construction captures the call
// stack; the trace is formatted only when asked for, and copies share it.
class TAV_EXPORT Exception : public BRIX::UserExceptionBase {
public:
    explicit Exception(const char* message);
    explicit Exception(const std::string& message);
    Exception(const char* message, const char* id);
    Exception(const std::string& message, const std::string& id);
    Exception(const Exception&) = default;
    Exception& operator=(const Exception&) = default;

    // Not overridden below ExceptionUnicode: a copy of a user, debug or
    // unimplemented failure is deliberately a plain Exception.
    Exception* clone() const override;
    [[noreturn]] void rethrow() const override;
    ~Exception() override;

    const char* what() const noexcept override;
    void convert_str(std::u16string& out) const override;
    void convert_str(std::string& out) const override;

protected:
    std::u16string ToUstringImpl() const override;

public:
    virtual const std::string& GetID() const;
    // The message, followed by a line feed and the trace in verbose mode.
    virtual std::u16string GetUnicodeMessageTxt() const;
    virtual const std::string& GetStackTrace() const;
    virtual void writeExternal(BRIX::ObjectOutput& out) const;

protected:
    std::string message;
    std::string id;
    std::shared_ptr<internal::ExceptionTrace> trace;
};

// A failure whose text is UTF-16; its 8-bit message and id stay empty.
class TAV_EXPORT ExceptionUnicode : public Exception {
public:
    explicit ExceptionUnicode(const std::u16string& message);
    ExceptionUnicode(const ExceptionUnicode&) = default;

    ExceptionUnicode* clone() const override;
    [[noreturn]] void rethrow() const override;
    std::u16string GetUnicodeMessageTxt() const override;

protected:
    std::u16string unicodeMessage;
};

// A failure the user is to see; the key of its catalogued message is its id.
class TAV_EXPORT UserException : public Exception {
public:
    UserException(const char* message, const BaseMsgID& messageId);
    UserException(const std::string& message, const BaseMsgID& messageId);
    ~UserException() override;
};

class TAV_EXPORT DebugException : public Exception {
public:
    explicit DebugException(const char* message);
    explicit DebugException(const std::string& message);
    ~DebugException() override;
};

class TAV_EXPORT UnImplementedException : public Exception {
public:
    explicit UnImplementedException(const char* message);
    explicit UnImplementedException(const std::string& message);
    ~UnImplementedException() override;
};

// The formatted trace of the exception built last in the process.
TAV_EXPORT std::string getLastExceptionStackTrace();

// Makes GetUnicodeMessageTxt append traces; returns the previous setting.
TAV_EXPORT bool setVerboseErrorMessage(bool verbose);

} // namespace TAV
