#include "screens/store/GoodsDetailCell.h"

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

QStringList GoodsDetailCell::titleParts() const
{
    const qsizetype at = m_emphasis.isEmpty() ? -1 : m_labelTitle.indexOf(m_emphasis);
    if (at < 0)
        return {m_labelTitle, QString(), QString()};
    return {m_labelTitle.left(at), m_emphasis, m_labelTitle.mid(at + m_emphasis.size())};
}

QVariantMap GoodsDetailCell::toRow() const
{
    return {
            {QStringLiteral("identifier"), m_identifier},
            {QStringLiteral("tag"), m_labelTag},
            {QStringLiteral("title"), m_labelTitle},
            {QStringLiteral("titleParts"), titleParts()},
            {QStringLiteral("icon"), m_imageIcon},
            {QStringLiteral("type"), m_type},
            {QStringLiteral("lookTag"), m_buttonLookTag},
            {QStringLiteral("hidden"), m_hidden},
    };
}
