#pragma once

#include <cstddef>
#include <memory>
#include <utility>

namespace TAV {

// A pointer and a size: the smallest growable array, for tag-indexed tables
// that are read on every cast and grow only when a class is first bound.
template <class T>
class LightVector {
public:
    LightVector() = default;
    LightVector(LightVector&&) noexcept = default;
    LightVector& operator=(LightVector&&) noexcept = default;

    std::size_t size() const { return fSize; }
    T& operator[](std::size_t i) { return fData[i]; }
    T const& operator[](std::size_t i) const { return fData[i]; }

    // Grows to at least n elements; new elements are value-initialised.
    void growTo(std::size_t n)
    {
        if (n <= fSize)
            return;
        std::unique_ptr<T[]> data(new T[n]());
        for (std::size_t i = 0; i < fSize; ++i)
            data[i] = std::move(fData[i]);
        fData = std::move(data);
        fSize = n;
    }

private:
    std::unique_ptr<T[]> fData;
    std::size_t fSize = 0;
};

} // namespace TAV
