#pragma once

#include <QByteArray>
#include <QString>

// Everything secret goes through libsodium: random identifiers, lookup hashes of secrets kept in
// the database, argon2id password hashes and the payment sandbox's signatures.
namespace Crypto {

// Random bytes as unpadded base64url text: 16 bytes give a 22-character, 128-bit identifier.
QByteArray randomToken(int bytes = 16);
// A number of exactly `digits` decimal digits, leading zeros kept ("004217").
QString randomDigits(int digits);
// Random characters of `alphabet`.
QString randomFrom(const QString &alphabet, int length);
// Hex of a keyless BLAKE2b hash: secrets (session ids, mail tokens) are stored only this way.
QByteArray lookupHash(const QByteArray &secret);
// argon2id with the interactive limits; at most two hashes run at once to bound memory.
QString hashPassword(const QString &password);
bool verifyPassword(const QString &hash, const QString &password);
// Upper-case hex HMAC-SHA256.
QByteArray hmacSha256Hex(const QByteArray &key, const QByteArray &message);
bool equalConstantTime(const QByteArray &a, const QByteArray &b);

} // namespace Crypto
