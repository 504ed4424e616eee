#pragma once

#include <tav/Export.h>
#include <tav/kernel/util/Exception.h>

#include <string>

namespace TAV {

template<class E>
class AsserterEx;

// A check site is two steps: Make, then handle with the source location.
//   Asserter::Make<Exception>(ok, "bad size %d", n).handle("kernel/x/Y", __LINE__, "");
// A passing check costs a flag test: nothing is formatted, nothing thrown.
class TAV_EXPORT Asserter {
public:
    explicit Asserter(bool condition) : passed(condition) {}
    virtual ~Asserter() = default;

    // Inline, so that a passing check on a concrete asserter costs no call.
    virtual void handle(const char* file, int line, const char* expression) const
    {
        if (passed)
            return;
        raise(file, line, expression);
    }

    static Asserter Make(bool condition) { return Asserter(condition); }

    // Formats into fLogBuf only when the condition is false.
    template<class E>
    static AsserterEx<E> Make(bool condition, const char* format, ...)
        __attribute__((format(printf, 2, 3)));

    template<class E>
    static AsserterEx<E> MakeAlways(const char* format, ...)
        __attribute__((format(printf, 1, 2)));

    // The text of internal checks that have nothing more to say.
    static constexpr char sNoMessage[] = "Internal assertion without a message detected! Please fix me asap";

    // The last formatted assertion text, shared by the whole process, unlocked.
    static char fLogBuf[4097];

protected:
    bool passed;

private:
    // What a failed check throws. Each asserter kind has its own, reached from its handle.
    [[noreturn]] void raise(const char* file, int line, const char* expression) const;
};

// Each asserter kind overrides handle with the same test in front of its own raise.
#define TAV_ASSERTER_HANDLE                                                          \
public:                                                                               \
    void handle(const char* file, int line, const char* expression) const override   \
    {                                                                                 \
        if (passed)                                                                   \
            return;                                                                   \
        raise(file, line, expression);                                                \
    }                                                                                 \
                                                                                      \
private:                                                                              \
    [[noreturn]] void raise(const char* file, int line, const char* expression) const;

// Throws E with "Assertion failed: <fLogBuf> at <file>:<line>: <expression>".
template<class E>
class TAV_EXPORT AsserterEx : public Asserter {
public:
    explicit AsserterEx(bool condition) : Asserter(condition) {}
    TAV_ASSERTER_HANDLE
};

// Throws ExceptionUnicode: the location, a line feed, then the given text.
template<>
class TAV_EXPORT AsserterEx<ExceptionUnicode> : public Asserter {
public:
    AsserterEx(bool condition, const std::u16string& text) : Asserter(condition), fText(text) {}
    TAV_ASSERTER_HANDLE
    std::u16string fText;
};

// Throws UserException identified by the message's key. Its text is whatever
// the last formatted assertion left in fLogBuf: callers go by the key.
template<>
class TAV_EXPORT AsserterEx<UserException> : public Asserter {
public:
    AsserterEx(bool condition, const BaseMsgID& messageId) : Asserter(condition), fMessage(messageId) {}
    TAV_ASSERTER_HANDLE
    const BaseMsgID& fMessage;
};

extern template class AsserterEx<Exception>;
extern template class AsserterEx<UnImplementedException>;
extern template AsserterEx<Exception> Asserter::Make<Exception>(bool, const char*, ...);
extern template AsserterEx<Exception> Asserter::MakeAlways<Exception>(const char*, ...);
extern template AsserterEx<UnImplementedException> Asserter::MakeAlways<UnImplementedException>(const char*, ...);

#undef TAV_ASSERTER_HANDLE

} // namespace TAV
