#pragma once

// One way for every test to say "this call fails, in these words".

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

// `statement` raises `Type` whose text contains `text`.
#define EXPECT_RAISES(statement, Type, text)                                                                       \
    EXPECT_THAT([&] { statement; }, ::testing::ThrowsMessage<Type>(::testing::HasSubstr(text)))

// `statement` raises `Type` whose text is exactly `text`.
#define EXPECT_RAISES_EXACTLY(statement, Type, text)                                                               \
    EXPECT_THAT([&] { statement; }, ::testing::ThrowsMessage<Type>(::testing::StrEq(text)))

// The library's own exception, the most common case.
#define EXPECT_TAV_THROW(statement, text) EXPECT_RAISES(statement, ::TAV::Exception, text)

namespace tavtest {

// The exception `call` raises, for a test that looks at more than its text.
template <class E, class F>
E raised(F&& call)
{
    try {
        call();
    } catch (E const& e) {
        return e;
    }
    ADD_FAILURE() << "nothing raised";
    throw std::logic_error("nothing raised");
}

} // namespace tavtest
