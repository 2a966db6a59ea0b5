#pragma once

#include <QFlags>
#include <QFont>
#include <QSizeF>
#include <QString>
#include <QUrl>

// Operations on a text; each takes the text first.
class NSStringUtils
{
public:
    // Search options, with the platform's values.
    enum CompareOption {
        CaseInsensitiveSearch = 1,
        LiteralSearch = 2,
        BackwardsSearch = 4,
        AnchoredSearch = 8,
        DiacriticInsensitiveSearch = 128,
        WidthInsensitiveSearch = 256,
    };
    Q_DECLARE_FLAGS(CompareOptions, CompareOption)

    enum LineBreakMode {
        ByWordWrapping,
        ByCharWrapping,
        ByClipping,
        ByTruncatingHead,
        ByTruncatingTail,
        ByTruncatingMiddle,
    };

    // The text as an address; an empty QUrl when it is not a valid one.
    static QUrl url(const QString &text);
    // The text without white space and line ends at both ends.
    static QString trim(const QString &text);
    // Whether `other` occurs in the text, ignoring case. The empty text occurs nowhere.
    static bool containsString(const QString &text, const QString &other);
    static bool containsString(const QString &text, const QString &other, CompareOptions options);
    // The size the text takes drawn in `font` within `constrainedSize`.
    static QSizeF tti_sizeWithFont(const QString &text, const QFont &font,
                                   const QSizeF &constrainedSize, LineBreakMode lineBreakMode);

    // The leading integer of the text (white space and a sign may precede it), clamped to 32
    // bits; 0 when there is none. "12abc" reads as 12.
    static int intValue(const QString &text);
    // The leading decimal number of the text; 0 when there is none. Used for prices.
    static double doubleValue(const QString &text);
};

Q_DECLARE_OPERATORS_FOR_FLAGS(NSStringUtils::CompareOptions)
