#pragma once

#include <tav/TAV/ScalarValue.h>

namespace TAV {

class Real : public ScalarValue<Real, double> {
public:
    using ScalarValue::ScalarValue;
};

} // namespace TAV
