#pragma once

#include <tav/Export.h>
#include <tav/TAV/String.h>
#include <tav/kernel/deviant/Deviant.h>
#include <tav/kernel/util/ReferenceCountingIntf.h>

namespace TAV {

class Object;
class ImmutableObject;
class ImmutableType;
// What the reflective operations of every interface answer with.
template <class T>
class ImmutableSequence;
template <class T>
class Sequence;

namespace NSInterface {

// Root of every object and state interface. The deviant hooks (deviant_*,
// internal_*) mean something only on an object implementation; here they are
// inert, so a state that inherits them answers null, false or nothing.
class TAV_EXPORT ObjectIntf : public ReferenceCountingIntf {
public:
    ~ObjectIntf() override;

    CooperativeVisitor::VisitEntry getVisitMethod(CooperativeVisitor::DispatchTable const& table) const override;
    void* cast(CooperativeVisitor::internal::ClassInfo const& info) const override;

    virtual void disconnectForDestroy(Deviant d) = 0;
    virtual void destroyContents(Deviant d, bool topLevel) = 0;
    virtual void destroy(Deviant d) = 0;

    virtual bool deviant_isValid(Deviant d);
    virtual void deviant_destroyState(ObjectIntf* state);
    virtual void deviant_markModelDestroyed();
    virtual void deviant_commitTransientState(Deviant d);
    virtual ObjectIntf* deviant_getCopyOfDeviation(Deviant d);
    virtual ObjectIntf* internal_getDeviation(Deviant d);
    virtual void internal_setDeviation(Deviant d, ObjectIntf* state);
    virtual ObjectIntf* internal_createDeviation(Deviant d);
    virtual void internal_destroyDeviation(Deviant d);
    virtual void internal_deviationAssign(Deviant d, ObjectIntf* source, Deviant sourceDeviant);
    virtual Deviant getRootDeviant() const;

    // Dotted class name for the host binding: "TAV.ImmutableX" or "TAV.X".
    virtual String getKestName(bool immutable) const;
    virtual String toString(Deviant d) const = 0;
    virtual Object getDefaultValue(Deviant d) const = 0;
    // Pure: its handle type is generated, so the default lives with it.
    virtual ImmutableType getMetaType(Deviant d) const = 0;

    virtual ObjectIntf const* getReadDeviantI(Deviant d, ObjectIntf const* asked) const;
    virtual ObjectIntf* getWriteDeviantI(Deviant d, ObjectIntf const* asked) const;

    // The handle on this object, as every generated interface answers with its own;
    // sequences of any object find their element type through it.
    ImmutableObject This(Deviant d) const;
};

} // namespace NSInterface
} // namespace TAV
