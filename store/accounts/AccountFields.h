#pragma once

#include <QString>

class FieldErrors;

// The checks of account forms and the texts of their refusals. Each refusal is a message and a
// field name that the client shows one after the other, so together they read as a sentence.
namespace AccountFields {

inline constexpr int kPasswordMin = 8;
inline constexpr int kPasswordMax = 64;
inline constexpr int kNickNameMax = 20;

bool isPhoneNumber(const QString &text); // 11 digits starting with 1
bool isEmail(const QString &text);

// Adds an error unless `value` is present; returns whether it is.
bool requirePresent(FieldErrors &errors, const QString &field, const QString &value,
                    const QString &humanName);
void checkPhoneNumber(FieldErrors &errors, const QString &field, const QString &value);
void checkEmail(FieldErrors &errors, const QString &field, const QString &value);
// The new password and, when a confirmation field is named, its repetition.
void checkNewPassword(FieldErrors &errors, const QString &password, const QString &confirmation,
                      bool confirmationSent);

// Ready-made refusals of codes and captchas.
[[noreturn]] void refuseCaptcha(const QString &field);
[[noreturn]] void refuseSmsCode(const QString &field);
[[noreturn]] void refuseCurrentPassword();

} // namespace AccountFields
