#include "screens/account/MyMessageCell.h"

const QString MyMessageCell::noReadImage = QStringLiteral("mes_noRead");
const QString MyMessageCell::readImage = QStringLiteral("mes_read");

void MyMessageCell::setCellContentWithType(int type, const QString &message, const QString &time)
{
    m_imageName = type == NotRead ? noReadImage : readImage;
    m_message = message;
    m_time = time;
}

QVariantMap MyMessageCell::row() const
{
    return {{QStringLiteral("imageName"), m_imageName},
            {QStringLiteral("title"), m_message},
            {QStringLiteral("time"), m_time}};
}
