#pragma once

#include <tav/kernel/util/Asserter.h>

#include <utility>

namespace TAV {

template <class T>
class RefBase;

// A counted pointer to a hand-written counted interface (not a metaclass),
// with the same null check as a generated handle.
template <class T>
class RefBase<T*> {
public:
    RefBase() = default;
    RefBase(T* p) : fPtr(p) { if (fPtr) fPtr->incRef(); }
    RefBase(RefBase const& o) : RefBase(o.fPtr) {}
    RefBase(RefBase&& o) noexcept : fPtr(std::exchange(o.fPtr, nullptr)) {}
    ~RefBase() { if (fPtr) fPtr->decRef(); }

    RefBase& operator=(RefBase o) noexcept
    {
        std::swap(fPtr, o.fPtr);
        return *this;
    }

    bool isValid() const { return fPtr != nullptr; }
    T* get() const { return fPtr; }

    T* operator->() const
    {
        Asserter::Make<Exception>(fPtr != nullptr, "Cannot access NULL ref. Use isValid() before calling methods")
            .handle("export/include/tav/kernel/util/RefBase", __LINE__, "");
        return fPtr;
    }

    friend bool operator==(RefBase const& a, RefBase const& b) { return a.fPtr == b.fPtr; }
    friend bool operator!=(RefBase const& a, RefBase const& b) { return a.fPtr != b.fPtr; }

private:
    T* fPtr = nullptr;
};

} // namespace TAV
