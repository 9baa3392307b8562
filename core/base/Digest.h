#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tidemark {

/// SHA-256 (FIPS 180-4) of bytes that arrive in pieces, by libcrypto.
class Sha256 {
public:
    Sha256();
    ~Sha256();
    Sha256(Sha256&&) noexcept;
    Sha256& operator=(Sha256&&) noexcept;

    void update(std::string_view bytes);
    /// The digest as 64 lower-case hexadecimal digits. The object must not be used afterwards.
    std::string finish();

    /// The digest of `bytes`.
    static std::string hex(std::string_view bytes);

private:
    struct Context;
    std::unique_ptr<Context> context;
};

} // namespace tidemark
