#pragma once

#include "core/base/Error.h"
#include "core/records/StorageMeasurementFailure.h"

namespace tidemark {

/// A `StorageMeasurementFailure` as an exception. `what()` is its sentence.
class StorageMeasurementError : public Error {
public:
    explicit StorageMeasurementError(StorageMeasurementFailure reason)
        : Error(std::string(rawValue(reason))), cause(reason) {}

    StorageMeasurementFailure failure() const { return cause; }

private:
    StorageMeasurementFailure cause;
};

} // namespace tidemark
