#pragma once

#include "core/base/JsonFields.h"

namespace tidemark {

/// Why a measurement ended without a size.
enum class StorageMeasurementFailure {
    unavailable,
    unreadable,
    timeLimit,
    entryLimit,
    cloudBacked,
    cancelled,
    paused,
};

/// The raw value is the sentence that is shown and that a record keeps as its `issue`.
template <>
inline constexpr auto json::rawValues<StorageMeasurementFailure> =
    std::to_array<json::RawValue<StorageMeasurementFailure>>({
        {StorageMeasurementFailure::unavailable,
         "The folder could not be opened. It may be missing or access may be unavailable."},
        {StorageMeasurementFailure::unreadable, "Some entries could not be read."},
        {StorageMeasurementFailure::timeLimit,
         "The scan reached its time limit. Folder access may be valid; the size measurement was "
         "not completed."},
        {StorageMeasurementFailure::entryLimit,
         "The scan reached its entry limit. Folder access may be valid; the size measurement was "
         "not completed."},
        {StorageMeasurementFailure::cloudBacked,
         "A cloud-only directory has no locally available listing. Tidemark does not download its "
         "contents to measure size."},
        {StorageMeasurementFailure::cancelled, "The scan was cancelled."},
        {StorageMeasurementFailure::paused,
         "Measurement paused at a work limit and will continue on a later check."},
    });

} // namespace tidemark
