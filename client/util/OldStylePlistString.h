#pragma once

#include <QString>
#include <QStringView>

// Decodes the content of a quoted string of the old-style property-list text form:
//  - \Uxxxx and \uxxxx with one to four hex digits (UTF-16 code units, so surrogate pairs combine);
//  - \ooo with one to three octal digits;
//  - \a \b \f \n \r \t \v as control characters;
//  - a backslash before any other character stands for that character (\" \\).
// Double quotes need no escaping here. Malformed input never fails: an escape letter without hex
// digits and a backslash at the very end are kept as written.
class OldStylePlistString
{
public:
    static QString decode(QStringView escaped);

private:
    static qsizetype decodeEscape(QStringView escaped, qsizetype at, QString &out);
    static qsizetype decodeNumber(QStringView escaped, qsizetype at, int base, int maxDigits,
                                  char32_t &value);
};
