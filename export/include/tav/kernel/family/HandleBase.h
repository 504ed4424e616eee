#pragma once

#include <tav/Export.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>

#include <utility>

namespace TAV {

// The two words of every generated handle: a counted pointer and a deviant.
// The pointer is the handle's own interface sub-object, stored as the
// ReferenceCountingIntf reached along that interface's first-base chain, which
// has the same address; each handle class converts it back by static casts.
class TAV_EXPORT HandleBase {
public:
    HandleBase(HandleBase const& aOther) noexcept : fObject(aOther.fObject), fDeviant(aOther.fDeviant)
    {
        if (fObject)
            fObject->incRef();
    }
    HandleBase(HandleBase&& aOther) noexcept
        : fObject(std::exchange(aOther.fObject, nullptr)), fDeviant(aOther.fDeviant)
    {
    }
    // A throwing decRef here ends the process: destructors don't unwind.
    ~HandleBase()
    {
        if (fObject)
            fObject->decRef();
    }
    HandleBase& operator=(HandleBase const& aOther);
    HandleBase& operator=(HandleBase&& aOther) noexcept
    {
        if (this != &aOther) {
            HandleBase old(std::move(*this));
            fObject = std::exchange(aOther.fObject, nullptr);
            fDeviant = aOther.fDeviant;
        }
        return *this;
    }

    // Keeps `aDeviant` only if it is a named deviant of the object's model;
    // otherwise the object's root deviant. No effect on an empty handle.
    void setDeviant(Deviant aDeviant) const;
    bool isValid() const;
    Deviant getDeviant() const { return fDeviant; }

    // Same object, whichever interface sub-object each handle holds.
    bool internal_sameObject(HandleBase const& aOther) const
    {
        return fObject == aOther.fObject || (fObject && aOther.fObject && sameObjectSlow(aOther));
    }
    ReferenceCountingIntf* internal_counted() const { return fObject; }
    // The object's canonical sub-object: one address for every handle on the
    // object, whichever interface each holds; null for an empty handle.
    void const* internal_identity() const;

protected:
    HandleBase() noexcept = default;

    void acquire(ReferenceCountingIntf* aObject)
    {
        fObject = aObject;
        if (fObject)
            fObject->incRef();
    }
    void reacquire(ReferenceCountingIntf* aObject);
    // Copies the deviant and answers aOther's object cast to `aInfo`, or null.
    void* castFrom(HandleBase const& aOther, CooperativeVisitor::internal::ClassInfo const& aInfo);
    [[noreturn]] static void nullReference(char const* aSource, int aLine);
    // The writability check of mutating accessors, when assertions are on.
    void assertWritable() const
    {
        if (DeviantAssertions::sAssertionsEnabled)
            assertWritableSlow();
    }

    ReferenceCountingIntf* fObject = nullptr;
    mutable Deviant fDeviant;

private:
    bool sameObjectSlow(HandleBase const& aOther) const;
    void assertWritableSlow() const;
};

static_assert(sizeof(HandleBase) == 2 * sizeof(void*), "a handle is two words");

} // namespace TAV
