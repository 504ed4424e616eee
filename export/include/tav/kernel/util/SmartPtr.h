#pragma once

#include <utility>

namespace TAV::Generic {

// Counting policy: incRef/decRef on the pointee, as handles do.
struct ReferenceCounted {
    template <class T>
    static void retain(T* p) { p->incRef(); }
    template <class T>
    static void release(T* p) { p->decRef(); }
};

// Intrusive pointer for sequences and iterators; no deviant of its own.
template <class T, class Policy = ReferenceCounted>
class SmartPtr {
public:
    SmartPtr() = default;
    SmartPtr(T* p) : fPtr(p) { if (fPtr) Policy::retain(fPtr); }
    SmartPtr(SmartPtr const& o) : SmartPtr(o.fPtr) {}
    SmartPtr(SmartPtr&& o) noexcept : fPtr(std::exchange(o.fPtr, nullptr)) {}
    template <class U>
    SmartPtr(SmartPtr<U, Policy> const& o) : SmartPtr(o.get()) {}
    ~SmartPtr() { if (fPtr) Policy::release(fPtr); }

    SmartPtr& operator=(SmartPtr o) noexcept
    {
        std::swap(fPtr, o.fPtr);
        return *this;
    }

    T* get() const { return fPtr; }
    T* operator->() const { return fPtr; }
    T& operator*() const { return *fPtr; }
    explicit operator bool() const { return fPtr != nullptr; }
    friend bool operator==(SmartPtr const& a, SmartPtr const& b) { return a.fPtr == b.fPtr; }

private:
    T* fPtr = nullptr;
};

} // namespace TAV::Generic
