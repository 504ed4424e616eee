#pragma once

#include <tav/TAV/ScalarValue.h>

namespace TAV {

class Single : public ScalarValue<Single, float> {
public:
    using ScalarValue::ScalarValue;
};

} // namespace TAV
