#include "core/Crypto.h"

#include <sodium.h>

#include <mutex>
#include <semaphore>
#include <stdexcept>

namespace Crypto {

namespace {

void ensureInitialised()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (sodium_init() < 0)
            throw std::runtime_error("libsodium could not be initialised");
    });
}

// argon2id needs its memory limit per running hash; two at a time keep the service small.
std::counting_semaphore<2> hashingSlots{2};

constexpr unsigned long long kOpsLimit = crypto_pwhash_OPSLIMIT_INTERACTIVE;
constexpr size_t kMemLimit = 19u * 1024u * 1024u;

class HashingSlot
{
public:
    HashingSlot() { hashingSlots.acquire(); }
    ~HashingSlot() { hashingSlots.release(); }
};

} // namespace

QByteArray randomToken(int bytes)
{
    ensureInitialised();
    QByteArray raw(bytes, Qt::Uninitialized);
    randombytes_buf(raw.data(), size_t(raw.size()));
    return raw.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

QString randomDigits(int digits)
{
    ensureInitialised();
    QString result;
    result.reserve(digits);
    for (int i = 0; i < digits; ++i)
        result += QChar(u'0' + char16_t(randombytes_uniform(10)));
    return result;
}

QString randomFrom(const QString &alphabet, int length)
{
    ensureInitialised();
    QString result;
    result.reserve(length);
    for (int i = 0; i < length; ++i)
        result += alphabet.at(int(randombytes_uniform(uint32_t(alphabet.size()))));
    return result;
}

QByteArray lookupHash(const QByteArray &secret)
{
    ensureInitialised();
    unsigned char digest[crypto_generichash_BYTES];
    crypto_generichash(digest, sizeof digest,
                       reinterpret_cast<const unsigned char *>(secret.constData()),
                       size_t(secret.size()), nullptr, 0);
    return QByteArray(reinterpret_cast<const char *>(digest), sizeof digest).toHex();
}

QString hashPassword(const QString &password)
{
    ensureInitialised();
    const QByteArray utf8 = password.toUtf8();
    char hashed[crypto_pwhash_STRBYTES];
    HashingSlot slot;
    if (crypto_pwhash_str_alg(hashed, utf8.constData(), size_t(utf8.size()), kOpsLimit, kMemLimit,
                              crypto_pwhash_ALG_ARGON2ID13)
        != 0)
        throw std::runtime_error("out of memory while hashing a password");
    return QString::fromLatin1(hashed);
}

bool verifyPassword(const QString &hash, const QString &password)
{
    ensureInitialised();
    const QByteArray stored = hash.toLatin1();
    const QByteArray utf8 = password.toUtf8();
    HashingSlot slot;
    return crypto_pwhash_str_verify(stored.constData(), utf8.constData(), size_t(utf8.size())) == 0;
}

QByteArray hmacSha256Hex(const QByteArray &key, const QByteArray &message)
{
    ensureInitialised();
    unsigned char mac[crypto_auth_hmacsha256_BYTES];
    crypto_auth_hmacsha256_state state;
    crypto_auth_hmacsha256_init(&state, reinterpret_cast<const unsigned char *>(key.constData()),
                                size_t(key.size()));
    crypto_auth_hmacsha256_update(&state,
                                  reinterpret_cast<const unsigned char *>(message.constData()),
                                  size_t(message.size()));
    crypto_auth_hmacsha256_final(&state, mac);
    return QByteArray(reinterpret_cast<const char *>(mac), sizeof mac).toHex().toUpper();
}

bool equalConstantTime(const QByteArray &a, const QByteArray &b)
{
    ensureInitialised();
    if (a.size() != b.size())
        return false;
    return sodium_memcmp(a.constData(), b.constData(), size_t(a.size())) == 0;
}

} // namespace Crypto
