#include "updates/EdDSASignature.h"

#include <openssl/evp.h>

#include <memory>

namespace vantrel {

namespace {

const unsigned char *bytesOf(QByteArrayView view)
{
    return reinterpret_cast<const unsigned char *>(view.data());
}

struct FreeKey
{
    void operator()(EVP_PKEY *key) const { ::EVP_PKEY_free(key); }
};

struct FreeContext
{
    void operator()(EVP_MD_CTX *context) const { ::EVP_MD_CTX_free(context); }
};

} // namespace

bool isSignedWithEd25519(const QByteArray &publicKey, const QByteArray &signature,
                         QByteArrayView message)
{
    if (publicKey.size() != ed25519PublicKeyBytes || signature.size() != ed25519SignatureBytes) {
        return false;
    }
    const std::unique_ptr<EVP_PKEY, FreeKey> key(::EVP_PKEY_new_raw_public_key(
        EVP_PKEY_ED25519, nullptr, bytesOf(publicKey), std::size_t(publicKey.size())));
    const std::unique_ptr<EVP_MD_CTX, FreeContext> context(::EVP_MD_CTX_new());
    return key && context &&
           ::EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           ::EVP_DigestVerify(context.get(), bytesOf(signature), std::size_t(signature.size()),
                              bytesOf(message), std::size_t(message.size())) == 1;
}

} // namespace vantrel
