#pragma once

// Objects of generated metaclasses on the model-less deviant fixture.

#include "kernel/TAV/NSImplementation/AssociationImpl.h"
#include "kernel/TAV/NSImplementation/ClassImpl.h"
#include "kernel/TAV/NSImplementation/DynamicStereotypeObjectImpl.h"
#include "kernel/TAV/NSImplementation/OperationImpl.h"
#include "kernel/TAV/NSImplementation/ParameterImpl.h"
#include "kernel/TAV/NSImplementation/PropertyImpl.h"
#include "kernel/TAV/NSImplementation/NSDeviant/PropertyDeviantImpl.h"

#include <tav/TAV/Association_h.h>
#include <tav/TAV/Class_h.h>
#include <tav/TAV/Operation_h.h>
#include <tav/TAV/Parameter_h.h>
#include <tav/TAV/Property_h.h>
#include <tav/TAV/StereotypeObject_h.h>
#include "kernel/deviant/DeviantImpl.h"
#include <tav/kernel/deviant/DeviantManager.h>
#include <tav/kernel/util/Exception.h>

#include "support/DeviantFixture.h"
#include "support/Expect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace TAV::test {

class FamilyTest : public tavtest::DeviantFixture {
protected:
    Deviant named = alpha;

    static void open(Deviant d) { beginTransaction(d); }
    static void close(Deviant d) { endTransaction(d); }


    Property newProperty() { return Property(make<NSImplementation::PropertyImpl>(root), root); }
    Class newClass() { return Class(make<NSImplementation::ClassImpl>(root), root); }
    Association newAssociation() { return Association(make<NSImplementation::AssociationImpl>(root), root); }

    // The object's own state in `d`, without read-through.
    static NSInterface::ObjectIntf* ownState(ImmutableClassObject const& h, Deviant d)
    {
        return d.getStateOfObject(static_cast<NSInterface::ObjectIntf*>(h.internal_intf()));
    }

    static NSImplementation::PropertyImpl* impl(ImmutableProperty const& p)
    {
        return static_cast<NSImplementation::PropertyImpl*>(p.internal_intf());
    }
};

} // namespace TAV::test
