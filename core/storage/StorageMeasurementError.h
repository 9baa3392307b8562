#pragma once

#include "core/base/Error.h"
#include "core/records/StorageMeasurementFailure.h"

namespace tidemark {

/// A `StorageMeasurementFailure` as an exception. `what()` is its sentence.
class StorageMeasurementError : public Error {
public:
    explicit StorageMeasurementError(StorageMeasurementFailure cause)
        : Error(std::string(rawValue(cause))), cause(cause) {}

    StorageMeasurementFailure failure() const { return cause; }

private:
    StorageMeasurementFailure cause;
};

} // namespace tidemark
