#pragma once

#include <tav/TAV/ScalarValue.h>

#include <cstdint>

namespace TAV {

class Integer : public ScalarValue<Integer, std::int32_t> {
public:
    using ScalarValue::ScalarValue;
};

} // namespace TAV
