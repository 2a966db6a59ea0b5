#pragma once

#include <QString>

class QObject;

// Checks of user input before it goes to the service. Each pattern must match the whole text.
// The *TextFiled checks take a text field or text view (an object implementing
// platform::TextHolder); any other object fails.
class TTIFormatValidate
{
public:
    static bool isValidateMobilePhone(const QString &text);
    static bool isValidateMobilePhoneTextFiled(const QObject *field);
    static bool isValidateEmail(const QString &text);
    static bool isValidateEmailTextFiled(const QObject *field);
    static bool isValidateNumber(const QString &text);
    static bool isValidateTelephone(const QString &text);
    static bool isTextFiledValidate(const QObject *field);
    static bool isTextFiledValidate(const QObject *field, int minLenght, int maxLenght);
    // The 18-character resident identity number with its MOD 11-2 check character.
    static bool validateIDCardNumber(const QString &text);
    static bool validateNickname(const QString &text);
    static bool validatePassword(const QString &text);
    static bool validatefloatString(const QString &text);

private:
    // The field's trimmed text, or a null string when the field or its text is empty.
    static QString trimmedFieldText(const QObject *field);
};
