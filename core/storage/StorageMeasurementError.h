#pragma once

#include "core/base/Error.h"
#include "core/records/StorageMeasurementFailure.h"

namespace tidemark {

/// A measurement failure where an exception is called for. `what()` is the failure's sentence.
class StorageMeasurementError : public Error {
public:
    explicit StorageMeasurementError(StorageMeasurementFailure reason)
        : Error(std::string(rawValue(reason))), cause(reason) {}

    StorageMeasurementFailure failure() const { return cause; }

private:
    StorageMeasurementFailure cause;
};

} // namespace tidemark
