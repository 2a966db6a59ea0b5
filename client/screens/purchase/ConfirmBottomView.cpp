#include "screens/purchase/ConfirmBottomView.h"

ConfirmBottomView::ConfirmBottomView(QObject *parent)
    : QObject(parent)
    , m_labelPrice(new platform::Label(this))
    , m_buttonPay(new platform::Button(this))
{
    m_buttonPay->setTitle(QStringLiteral("立即支付"));
    connect(m_buttonPay, &platform::Button::clicked, this, [this] {
        if (m_myBlock)
            m_myBlock();
    });
}

void ConfirmBottomView::setPrice(const QString &price, Block block)
{
    setPrice(price);
    m_myBlock = std::move(block);
}

void ConfirmBottomView::setPrice(const QString &price)
{
    m_labelPrice->setText(price);
}
