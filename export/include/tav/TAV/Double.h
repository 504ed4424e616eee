#pragma once

#include <tav/TAV/ScalarValue.h>

namespace TAV {

class Double : public ScalarValue<Double, double> {
public:
    using ScalarValue::ScalarValue;
};

} // namespace TAV
