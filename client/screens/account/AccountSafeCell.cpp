#include "screens/account/AccountSafeCell.h"

#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

namespace {

// The button's look per type: a quiet outline for a change, the accent for a missing binding.
const QColor ModifyTitleColor(60, 102, 183);
const QColor ModifyBackgroundColor(234, 240, 250);
const QColor BindTitleColor(Qt::white);
const QColor BindBackgroundColor(249, 145, 45);
const QColor TipColor(0x88, 0x88, 0x88);

} // namespace

AccountSafeCell::AccountSafeCell(QObject *parent)
    : QObject(parent)
    , m_labelTip(new platform::Label(this))
    , m_buttonModify(new platform::Button(this))
{
    m_labelTip->setTextColor(TipColor);
    setButtonType(Modify);
    connect(m_buttonModify, &platform::Button::clicked, this, [this] {
        if (const Block block = m_block)
            block();
    });
}

void AccountSafeCell::setCellContentWithTitle(const QString &title, const QString &tip, Block block)
{
    m_title = title;
    m_labelTip->setText(tip);
    m_block = std::move(block);
    emit changed();
}

void AccountSafeCell::setButtonType(int type)
{
    m_buttonType = type;
    const bool bind = type == Bind;
    m_buttonModify->setTitle(bind ? QStringLiteral("绑定") : QStringLiteral("修改"));
    m_buttonModify->setTitleColor(bind ? BindTitleColor : ModifyTitleColor);
    m_buttonBackgroundColor = bind ? BindBackgroundColor : ModifyBackgroundColor;
    emit changed();
}
