#include "core/base/Digest.h"

#include "core/base/Error.h"
#include "core/base/Hex.h"

#include <openssl/evp.h>

namespace tidemark {

struct Sha256::Context {
    EVP_MD_CTX* handle = EVP_MD_CTX_new();

    Context() = default;
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context() { EVP_MD_CTX_free(handle); }
};

namespace {

void require(int status) {
    if (status != 1)
        throw Error("The SHA-256 digest is not available.");
}

/// Looked up once, because that takes as long as digesting a short text. Null when there is none.
const EVP_MD* algorithm() {
    static const EVP_MD* const found = EVP_MD_fetch(nullptr, "SHA256", nullptr);
    return found;
}

} // namespace

Sha256::Sha256() : context(std::make_unique<Context>()) {
    require(EVP_DigestInit_ex(context->handle, algorithm(), nullptr));
}
Sha256::~Sha256() = default;
Sha256::Sha256(Sha256&&) noexcept = default;
Sha256& Sha256::operator=(Sha256&&) noexcept = default;

void Sha256::update(std::string_view bytes) {
    require(EVP_DigestUpdate(context->handle, bytes.data(), bytes.size()));
}

std::string Sha256::finish() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest{};
    unsigned int length = 0;
    require(EVP_DigestFinal_ex(context->handle, digest.data(), &length));
    std::string text(2 * std::size_t{length}, '0');
    for (std::size_t i = 0; i < length; ++i) {
        text[2 * i] = lowerHexDigits[digest[i] >> 4];
        text[2 * i + 1] = lowerHexDigits[digest[i] & 0x0F];
    }
    return text;
}

std::string Sha256::hex(std::string_view bytes) {
    Sha256 digest;
    digest.update(bytes);
    return digest.finish();
}

} // namespace tidemark
