#include "util/NSStringUtils.h"

#include <QFontMetricsF>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cmath>
#include <string>

namespace {

qsizetype skipSpaces(const QString &text)
{
    qsizetype i = 0;
    while (i < text.size() && text.at(i).isSpace())
        ++i;
    return i;
}

bool isAsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

QString withoutDiacritics(const QString &text)
{
    const QString decomposed = text.normalized(QString::NormalizationForm_D);
    QString stripped;
    stripped.reserve(decomposed.size());
    for (QChar c : decomposed) {
        if (c.category() != QChar::Mark_NonSpacing)
            stripped += c;
    }
    return stripped;
}

QString searchForm(const QString &text, NSStringUtils::CompareOptions options)
{
    QString form = text;
    if (options & NSStringUtils::WidthInsensitiveSearch)
        form = form.normalized(QString::NormalizationForm_KC);
    if (options & NSStringUtils::DiacriticInsensitiveSearch)
        form = withoutDiacritics(form);
    // Unless asked for a literal search, composed and decomposed forms of a character are equal.
    if (!(options & NSStringUtils::LiteralSearch))
        form = form.normalized(QString::NormalizationForm_C);
    return form;
}

int textFlags(NSStringUtils::LineBreakMode mode)
{
    return mode == NSStringUtils::ByCharWrapping ? Qt::TextWrapAnywhere : Qt::TextWordWrap;
}

} // namespace

QUrl NSStringUtils::url(const QString &text)
{
    const QUrl address(text, QUrl::StrictMode);
    return text.isEmpty() || !address.isValid() ? QUrl() : address;
}

QString NSStringUtils::trim(const QString &text)
{
    return text.trimmed();
}

bool NSStringUtils::containsString(const QString &text, const QString &other)
{
    return containsString(text, other, CaseInsensitiveSearch);
}

bool NSStringUtils::containsString(const QString &text, const QString &other,
                                   CompareOptions options)
{
    if (other.isEmpty())
        return false;
    const QString haystack = searchForm(text, options);
    const QString needle = searchForm(other, options);
    const Qt::CaseSensitivity cs
            = options & CaseInsensitiveSearch ? Qt::CaseInsensitive : Qt::CaseSensitive;
    if (options & AnchoredSearch) {
        return options & BackwardsSearch ? haystack.endsWith(needle, cs)
                                         : haystack.startsWith(needle, cs);
    }
    return haystack.contains(needle, cs);
}

QSizeF NSStringUtils::tti_sizeWithFont(const QString &text, const QFont &font,
                                       const QSizeF &constrainedSize, LineBreakMode lineBreakMode)
{
    const QFontMetricsF metrics(font);
    const QRectF bounds(0, 0, constrainedSize.width(), constrainedSize.height());
    const QRectF used = metrics.boundingRect(bounds, textFlags(lineBreakMode), text);
    return QSizeF(std::ceil(std::min(used.width(), constrainedSize.width())),
                  std::ceil(std::min(used.height(), constrainedSize.height())));
}

int NSStringUtils::intValue(const QString &text)
{
    qsizetype i = skipSpaces(text);
    bool negative = false;
    if (i < text.size() && (text.at(i) == QLatin1Char('-') || text.at(i) == QLatin1Char('+')))
        negative = text.at(i++) == QLatin1Char('-');
    qint64 magnitude = 0;
    for (; i < text.size() && isAsciiDigit(text.at(i)); ++i) {
        magnitude = std::min<qint64>(magnitude * 10 + text.at(i).digitValue(), qint64(INT_MAX) + 1);
    }
    const qint64 value = negative ? -magnitude : magnitude;
    return int(std::clamp<qint64>(value, INT_MIN, INT_MAX));
}

double NSStringUtils::doubleValue(const QString &text)
{
    qsizetype i = skipSpaces(text);
    if (i < text.size() && text.at(i) == QLatin1Char('+'))
        ++i;
    std::string number;
    for (; i < text.size() && text.at(i).unicode() < 0x80; ++i) {
        const char c = char(text.at(i).unicode());
        if (!std::isdigit(static_cast<unsigned char>(c)) && c != '.' && c != '-' && c != 'e'
            && c != 'E' && c != '+')
            break;
        number += c;
    }
    double value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return value;
}
