#pragma once

#include <QByteArray>

#include <memory>

struct evp_md_ctx_st;

// SHA-256 fed piece by piece, as the bytes pass through a copy or a read.
class Sha256
{
public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256 &) = delete;
    Sha256 &operator=(const Sha256 &) = delete;

    void update(const char *data, qint64 size);
    QByteArray finish(); // the 32 raw bytes of the digest

    // Frees OpenSSL's per-thread state; pool threads call it when their hashing is done.
    static void releaseThreadState();

private:
    struct Freer {
        void operator()(evp_md_ctx_st *context) const;
    };
    std::unique_ptr<evp_md_ctx_st, Freer> m_context;
};
