#include "core/base/Collation.h"

#include <unicode/coll.h>
#include <unicode/stringpiece.h>

namespace tidemark {

struct Collation::Implementation {
    std::unique_ptr<icu::Collator> collator;
};

Collation::Collation() : implementation(std::make_unique<Implementation>()) {
    UErrorCode status = U_ZERO_ERROR;
    implementation->collator.reset(icu::Collator::createInstance(status));
    if (implementation->collator)
        implementation->collator->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, status);
}
Collation::~Collation() = default;
Collation::Collation(Collation&&) noexcept = default;
Collation& Collation::operator=(Collation&&) noexcept = default;

int Collation::compare(std::string_view a, std::string_view b) const {
    if (!implementation->collator)
        return a.compare(b);
    const auto piece = [](std::string_view text) {
        return icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size()));
    };
    UErrorCode status = U_ZERO_ERROR;
    return implementation->collator->compareUTF8(piece(a), piece(b), status);
}

} // namespace tidemark
