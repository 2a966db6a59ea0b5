#pragma once

#include <QString>

class NSStringTools
{
public:
    // Whether the whole text is one integer: white space and a sign may precede the digits,
    // nothing may follow them. An integer too large for 32 bits still counts.
    static bool isInt(const QString &text);

    // The text with its "\u"/"\U" escapes (and the other escapes of a quoted property-list string)
    // turned into the characters they stand for; a literal "\r\n" left after that becomes a line
    // end.
    static QString replaceUnicode(const QString &text);

    // One value out of a printed key-value description such as `message = "\U5bc6\U7801"`: the
    // part after the last "=", unescaped, without blanks, line ends, parentheses and double quotes.
    static QString replaceString(const QString &text);
};
