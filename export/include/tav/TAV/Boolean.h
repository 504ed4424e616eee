#pragma once

#include <tav/TAV/ScalarValue.h>

namespace TAV {

class Boolean : public ScalarValue<Boolean, bool> {
public:
    using ScalarValue::ScalarValue;
};

} // namespace TAV
