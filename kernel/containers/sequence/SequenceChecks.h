#pragma once

// The failures of the sequence family, each text in one place. A check is
// made before anything changes, so a failed one leaves sequence and counts as
// they were.

namespace TAV::Generic::checks {

[[noreturn]] void negativeIndex(char const* aSource, int aLine);
[[noreturn]] void indexOutOfBounds(char const* aSource, int aLine);
[[noreturn]] void empty(char const* aSource, int aLine);
[[noreturn]] void nullElement(char const* aHostName, char const* aSource, int aLine);
[[noreturn]] void nullUnderlying(char const* aSource, int aLine);

// Reading, replacing and erasing need an element at the index; inserting
// may also append, at index == size.
inline void index(int aIndex, int aSize, bool aInsertion, char const* aSource, int aLine)
{
    if (aIndex < 0)
        negativeIndex(aSource, aLine);
    if (aInsertion ? aIndex > aSize : aIndex >= aSize)
        indexOutOfBounds(aSource, aLine);
}

inline void notEmpty(int aSize, char const* aSource, int aLine)
{
    if (aSize == 0)
        empty(aSource, aLine);
}

} // namespace TAV::Generic::checks
