#include "screens/store/GoodsDetailCell.h"

namespace {

// Counts of related items in the shop's orange, the base game's name in link blue.
QString emphasisColour(int linkType)
{
    return linkType == GoodsDetailCell::BaseGameLink ? QStringLiteral("#3c66b7")
                                                     : QStringLiteral("#f9912d");
}

} // namespace

GoodsDetailCell::GoodsDetailCell(const QString &identifier)
    : m_identifier(identifier)
{ }

QString GoodsDetailCell::blockedNotice()
{
    return QStringLiteral("该游戏已暂停销售，暂时无法购买和激活，敬请谅解!");
}

void GoodsDetailCell::setCellContentWithTitle(const QString &title, const QString &icon, int type)
{
    m_labelTitle = title;
    m_imageIcon = icon;
    m_type = type;
}

void GoodsDetailCell::setCellContentWithTag(const QString &tag, const QString &title)
{
    m_labelTag = tag;
    m_labelTitle = title;
}

void GoodsDetailCell::setCellContentWithType(int type, const QString &title,
                                             const QString &emphasis)
{
    m_type = type;
    m_labelTitle = title;
    m_emphasis = emphasis;
}

void GoodsDetailCell::setCellContentWithContent(const QString &content)
{
    m_labelTitle = content;
}

QString GoodsDetailCell::styledTitle() const
{
    const qsizetype at = m_emphasis.isEmpty() ? -1 : m_labelTitle.indexOf(m_emphasis);
    if (at < 0)
        return m_labelTitle.toHtmlEscaped();
    return m_labelTitle.left(at).toHtmlEscaped()
           + QStringLiteral("<font color=\"%1\">%2</font>")
                     .arg(emphasisColour(m_type), m_emphasis.toHtmlEscaped())
           + m_labelTitle.mid(at + m_emphasis.size()).toHtmlEscaped();
}

QVariantMap GoodsDetailCell::toRow() const
{
    return {
            {QStringLiteral("identifier"), m_identifier},
            {QStringLiteral("tag"), m_labelTag},
            {QStringLiteral("title"), m_labelTitle},
            {QStringLiteral("styledTitle"), styledTitle()},
            {QStringLiteral("icon"), m_imageIcon},
            {QStringLiteral("type"), m_type},
            {QStringLiteral("lookTag"), m_buttonLookTag},
            {QStringLiteral("hidden"), m_hidden},
    };
}
