#pragma once

#include <tav/TAV/EnumerationValue.h>

namespace TAV {

class TAV_EXPORT PersistenceKind : public EnumerationOf<PersistenceKind> {
public:
    enum Value : int { Default = 0, Transient = 1, Extension = 2 };

    using EnumerationOf::EnumerationOf;
    static Literals const& getLiterals();
};

} // namespace TAV
