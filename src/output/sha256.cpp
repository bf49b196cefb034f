#include "sha256.h"

#include <openssl/crypto.h>
#include <openssl/evp.h>

void Sha256::Freer::operator()(evp_md_ctx_st *context) const
{
    EVP_MD_CTX_free(context);
}

Sha256::Sha256() : m_context(EVP_MD_CTX_new())
{
    EVP_DigestInit_ex(m_context.get(), EVP_sha256(), nullptr);
}

Sha256::~Sha256() = default;

void Sha256::update(const char *data, qint64 size)
{
    if (size > 0)
        EVP_DigestUpdate(m_context.get(), data, static_cast<size_t>(size));
}

QByteArray Sha256::finish()
{
    QByteArray digest(EVP_MAX_MD_SIZE, Qt::Uninitialized);
    unsigned int length = 0;
    EVP_DigestFinal_ex(m_context.get(), reinterpret_cast<unsigned char *>(digest.data()), &length);
    digest.resize(length);
    return digest;
}

void Sha256::releaseThreadState()
{
    // OpenSSL frees this state itself only while its exit handler has not run yet; pool
    // threads can outlive that handler.
    OPENSSL_thread_stop();
}
