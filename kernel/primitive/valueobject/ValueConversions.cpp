#include <tav/TAV/Boolean.h>
#include <tav/TAV/Double.h>
#include <tav/TAV/Integer.h>
#include <tav/TAV/PackageMergeKind.h>
#include <tav/TAV/ParameterDirectionKind.h>
#include <tav/TAV/PersistenceKind.h>
#include <tav/TAV/Real.h>
#include <tav/TAV/Single.h>
#include <tav/TAV/String.h>
#include <tav/TAV/UnlimitedNatural.h>
#include <tav/TAV/VisibilityKind.h>
#include <tav/kernel/primitive/ValueObjectFactory.h>
#include <tav/kernel/util/TAVCast.h>

namespace TAV {

template <class Derived, class Raw>
Derived ScalarValue<Derived, Raw>::fromObject(ImmutableObject const& aObject)
{
    return TAVCast<Derived>(aObject);
}

template <class Derived, class Raw>
ScalarValue<Derived, Raw>::operator ValueObject() const
{
    return ValueObjectFactory::createFrom(static_cast<Derived const&>(*this));
}

template <class Derived, class Raw>
ScalarValue<Derived, Raw>::operator Object() const
{
    return ValueObject(*this);
}

// Every value class over a number, enumerations included.
template class ScalarValue<Boolean, bool>;
template class ScalarValue<Integer, Integer::RawType>;
template class ScalarValue<UnlimitedNatural, UnlimitedNatural::RawType>;
template class ScalarValue<Real, double>;
template class ScalarValue<Double, double>;
template class ScalarValue<Single, float>;
template class ScalarValue<VisibilityKind, int>;
template class ScalarValue<ParameterDirectionKind, int>;
template class ScalarValue<PersistenceKind, int>;
template class ScalarValue<PackageMergeKind, int>;

String String::fromObject(ImmutableObject const& aObject)
{
    return TAVCast<String>(aObject);
}

String::operator ValueObject() const
{
    return ValueObjectFactory::createFrom(*this);
}

String::operator Object() const
{
    return ValueObject(*this);
}

} // namespace TAV
